#pragma once

#include "zent/geometry/Mesh.h"
#include "zent/geometry/weights.h"

namespace zent {

/// Carries each point by what its place on a driver's triangle has moved since it was bound, scaled by the envelope. T
/// is Mesh; points are in object space, bind positions in world space.
///
/// Binding i belongs to point i; bindings beyond the points are not read. An envelope below 1e-5 changes nothing.
/// Throws std::runtime_error, before a point is moved, for fewer bindings than points, or a binding that names a point
/// that the driver doesn't have.
template <class T>
T& wrap(float envelope, T& geometry, T const& driver, WrapBindings const& bindings);
extern template Mesh& wrap(float, Mesh&, Mesh const&, WrapBindings const&);

Mesh& wrapMesh(float envelope, Mesh& geometry, Mesh const& driver, WrapBindings const& bindings);

} // namespace zent
