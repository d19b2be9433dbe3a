#pragma once

#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"

#include <functional>
#include <map>

namespace zent {

/// A blend shape's items that are whole shapes, by target and item index, held by reference for the call.
template <class T>
using TargetShapes = std::map<ItemIndex, std::reference_wrapper<T const>>;
/// A blend shape's items that are lists of deltas.
using TargetDeltas = std::map<ItemIndex, std::reference_wrapper<DeltaList const>>;
/// For each target the factors, by point, of its whole shapes' weights; an absent point has factor 1.
using TargetWeightMaps = std::map<unsigned int, WeightMap>;

/// Maya's blendShape: the base plus, target by target, the weighted difference of the items that the target's weight
/// selects. T is Mesh, Curve or Surface; all points are in object space.
///
/// An item stands at the in-between value (item index - 5000) / 1000, so 6000 is the full target. An envelope below
/// 1e-5 gives a copy of the base. Shapes of other sizes blend their common leading points. Throws std::runtime_error
/// where a delta that is applied names a point that the base doesn't hold.
template <class T>
T blendShape(float envelope, T const& base, WeightMap weights, TargetShapes<T> shapes, TargetDeltas deltas,
             TargetWeightMaps weightMaps);
extern template Mesh blendShape(float, Mesh const&, WeightMap, TargetShapes<Mesh>, TargetDeltas, TargetWeightMaps);
extern template Curve blendShape(float, Curve const&, WeightMap, TargetShapes<Curve>, TargetDeltas, TargetWeightMaps);
extern template Surface blendShape(float, Surface const&, WeightMap, TargetShapes<Surface>, TargetDeltas,
                                   TargetWeightMaps);

Mesh blendShapeMesh(float envelope, Mesh const& base, WeightMap weights, TargetShapes<Mesh> shapes, TargetDeltas deltas,
                    TargetWeightMaps weightMaps);
Curve blendShapeCurve(float envelope, Curve const& base, WeightMap weights, TargetShapes<Curve> shapes,
                      TargetDeltas deltas, TargetWeightMaps weightMaps);
Surface blendShapeSurface(float envelope, Surface const& base, WeightMap weights, TargetShapes<Surface> shapes,
                          TargetDeltas deltas, TargetWeightMaps weightMaps);

/// Adds weight times the difference of a target and the base, over their common leading points; the weight map holds
/// the factors by point. Nothing happens for a weight below 1e-5: by magnitude for a mesh and a curve, signed for a
/// surface. Throws std::runtime_error where a shape lacks points that its own counts speak for, or the result some of
/// the common points.
void IMPL_blend_target(Mesh& result, float weight, Mesh const& base, Mesh const& target, WeightMap const& factors);
void IMPL_blend_target(Curve& result, float weight, Curve const& base, Curve const& target, WeightMap const& factors);
void IMPL_blend_target(Surface& result, float weight, Surface const& base, Surface const& target,
                       WeightMap const& factors);

/// Adds weight times each delta, in list order. Nothing happens for a weight below 1e-5: by magnitude for a mesh,
/// signed for a curve and a surface. Throws std::runtime_error where a delta names a point that the result doesn't
/// hold.
void IMPL_blend_target(Mesh& result, float weight, DeltaList const& deltas);
void IMPL_blend_target(Curve& result, float weight, DeltaList const& deltas);
void IMPL_blend_target(Surface& result, float weight, DeltaList const& deltas);

/// The in-between value of an item index, (item index - 5000) / 1000.
float inBetweenValue(unsigned int itemIndex);

/// An item of a target as a single point has it.
struct PointItem {
    float value;         ///< the in-between value
    bool isDelta;        ///< a delta, or else a whole shape
    vec3 vector;         ///< the delta, or the whole shape's point
    float factor = 1.0f; ///< of a whole shape's weight
};
using PointItems = svec<PointItem, 8>;

/// `blendShape<T>` for one point and one target: adds to `result` what the target's weight selects of its items, of
/// which there is at least one. Items of equal value stand with whole shapes first, each kind by its index. The list is
/// left sorted by value. Called for the targets in ascending order from a result that is the base, and only for an
/// envelope of at least 1e-5, it gives the bits of `blendShape`.
template <class T>
void blendPointTarget(vec3& result, float envelope, vec3 base, float weight, PointItems& items);
extern template void blendPointTarget<Mesh>(vec3&, float, vec3, float, PointItems&);
extern template void blendPointTarget<Curve>(vec3&, float, vec3, float, PointItems&);
extern template void blendPointTarget<Surface>(vec3&, float, vec3, float, PointItems&);

} // namespace zent
