#pragma once

#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"

namespace zent {

/// Maya's wire, in place: carries each bound point from the base wire to the deformed one, turned by `rotation` times
/// the rotation between their tangents and by a twist that fades from locator to locator. T is Mesh or Curve; points
/// are in object space, frames in world space, twists in radians.
///
/// Binding i belongs to point i; locator parameters ascend, without any there is no twist. Throws std::runtime_error,
/// before a point is moved, for more bindings than points, fewer twists than locators, or a wire that has no point at a
/// parameter.
template <class T>
T& wire(T& geometry, float rotation, Curve const& baseWire, Curve const& deformedWire, svec<float, 8> locatorParameters,
        svec<float, 8> locatorTwists, WireBindings const& bindings);
extern template Mesh& wire(Mesh&, float, Curve const&, Curve const&, svec<float, 8>, svec<float, 8>,
                           WireBindings const&);
extern template Curve& wire(Curve&, float, Curve const&, Curve const&, svec<float, 8>, svec<float, 8>,
                            WireBindings const&);

/// Where a wire carries one bound point, both in world space: for a caller that goes point by point, after
/// `requireWires`.
vec3 wirePoint(vec3 point_world, float rotation, Curve const& baseWire, Curve const& deformedWire,
               svec<float, 8> const& locatorParameters, svec<float, 8> const& locatorTwists,
               WireBindings::value_type const& binding);

Mesh& wireMesh(Mesh& geometry, float rotation, Curve const& baseWire, Curve const& deformedWire,
               svec<float, 8> locatorParameters, svec<float, 8> locatorTwists, WireBindings const& bindings);
Curve& wireCurve(Curve& geometry, float rotation, Curve const& baseWire, Curve const& deformedWire,
                 svec<float, 8> locatorParameters, svec<float, 8> locatorTwists, WireBindings const& bindings);

/// What `wire` requires of its wires and locators, for a caller that wants to know before there is a point to move.
void requireWires(Curve const& baseWire, Curve const& deformedWire, svec<float, 8> const& locatorParameters,
                  svec<float, 8> const& locatorTwists);

} // namespace zent
