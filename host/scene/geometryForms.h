#pragma once

#include "maya/Data.h"
#include "maya/Slot.h"
#include "scene/Json.h"

#include <functional>
#include <memory>
#include <vector>

namespace scene {

/// Geometry that a scene file tells in place. T is MeshData, CurveData, SurfaceData or LatticeData.
template <class T>
std::shared_ptr<Object> readGeometryForm(const Slot& slot, const Json& value);

/// The numbers of an index list, by its block.
using IndexListOf = std::function<const std::vector<unsigned int>&(unsigned int id)>;

/// Geometry from a block with what the scene file tells besides: its matrix, the polygons and UV sets of a mesh.
template <class T>
std::shared_ptr<const Object> withMembers(const Slot& slot, std::shared_ptr<const Object> geometry, const Json& value,
                                          const IndexListOf& indexListOf);

template <>
std::shared_ptr<Object> readGeometryForm<MeshData>(const Slot& slot, const Json& value);
template <>
std::shared_ptr<Object> readGeometryForm<CurveData>(const Slot& slot, const Json& value);
template <>
std::shared_ptr<Object> readGeometryForm<SurfaceData>(const Slot& slot, const Json& value);
template <>
std::shared_ptr<Object> readGeometryForm<LatticeData>(const Slot& slot, const Json& value);
template <>
std::shared_ptr<const Object> withMembers<MeshData>(const Slot& slot, std::shared_ptr<const Object> geometry,
                                                    const Json& value, const IndexListOf& indexListOf);

} // namespace scene
