#pragma once

#include "maya/Data.h"

#include <zent/geometry/shapes.h>

#include <memory>

namespace scene {

/// The record of a resource file that holds geometry of a kind.
template <class T>
struct BlockRecord;
template <>
struct BlockRecord<MeshData> {
    using Type = zent::Mesh;
};
template <>
struct BlockRecord<CurveData> {
    using Type = zent::Curve;
};
template <>
struct BlockRecord<SurfaceData> {
    using Type = zent::Surface;
};
template <>
struct BlockRecord<LatticeData> {
    using Type = zent::Lattice;
};
template <class T>
using BlockOf = typename BlockRecord<T>::Type;

/// A block's geometry as a plug holds it. Throws std::runtime_error for a lattice with fewer points than its counts
/// tell.
std::shared_ptr<Object> fromBlock(const zent::Mesh& mesh);
std::shared_ptr<Object> fromBlock(const zent::Curve& curve);
std::shared_ptr<Object> fromBlock(const zent::Surface& surface);
std::shared_ptr<Object> fromBlock(const zent::Lattice& lattice);

} // namespace scene
