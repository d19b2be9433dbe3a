#pragma once

#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"
#include "zent/math/rotation.h"

#include <boost/optional.hpp>

#include <vector>

namespace zent {

/// Maya's cluster, in place. A member of weight 1 goes through first times second matrix (column-vector order); one of
/// a fractional weight through an interpolated copy of the handle's transformation, built from its channels; one of
/// weight 0 stays. T is Curve, Surface or Lattice; all points are in object space.
///
/// Members are the points of `indices` (all points without them) and of `weights`, whose weight is 1 where `weights`
/// says nothing. `rotate` is in radians. `angleMode` 0 to 3 picks the path of the rotation, any other leaves it out.
/// Throws std::runtime_error, before a point is moved, where a member of weight other than 0 is no point of the shape.
template <class T>
T& _cluster(T& geometry, boost::optional<std::vector<unsigned int>> indices, mat4 first, mat4 second, int angleMode,
            WeightMap weights, vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
            vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate);
extern template Curve& _cluster(Curve&, boost::optional<std::vector<unsigned int>>, mat4, mat4, int, WeightMap, vec3,
                                vec3, int, vec3, vec3, vec3, vec3, vec3);
extern template Surface& _cluster(Surface&, boost::optional<std::vector<unsigned int>>, mat4, mat4, int, WeightMap,
                                  vec3, vec3, int, vec3, vec3, vec3, vec3, vec3);
extern template Lattice& _cluster(Lattice&, boost::optional<std::vector<unsigned int>>, mat4, mat4, int, WeightMap,
                                  vec3, vec3, int, vec3, vec3, vec3, vec3, vec3);

/// What `_cluster` does to its members, set up once for any number of points.
class PointCluster {
public:
    PointCluster(mat4 const& first, mat4 const& second, int angleMode, vec3 translate, vec3 rotate, int rotateOrder,
                 vec3 scale, vec3 rotatePivot, vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate);

    /// A point that is the only member.
    vec3 operator()(vec3 point, float weight) const;
    /// One of several: `scales`, those of the handle for the first one, are left for the next one.
    vec3 operator()(vec3 point, float weight, vec4& scales) const;
    vec4 scales() const { return scales_; }

private:
    mat4 full_;
    Slerp rotation_;
    vec4 fullRotation_; ///< x, y, z, w of its end
    bool rotates_;
    vec4 scales_; ///< of this and the following w is 0
    vec4 translate_;
    vec4 pivotOffset_;
    vec4 rotatePivot_;
    vec4 scalePivot_;
    vec4 scalePivotTranslate_;
};
PointCluster pointCluster(mat4 const& first, mat4 const& second, int angleMode, vec3 translate, vec3 rotate,
                          int rotateOrder, vec3 scale, vec3 rotatePivot, vec3 scalePivot, vec3 rotatePivotTranslate,
                          vec3 scalePivotTranslate);

Curve& clusterCurve(Curve& geometry, std::vector<unsigned int> indices, mat4 first, mat4 second, int angleMode,
                    WeightMap weights, vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
                    vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate);
Lattice& clusterLattice(Lattice& geometry, std::vector<unsigned int> indices, mat4 first, mat4 second, int angleMode,
                        WeightMap weights, vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
                        vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate);

/// The cluster of all points.
Curve& clusterFullCurve(Curve& geometry, mat4 first, mat4 second, int angleMode, WeightMap weights, vec3 translate,
                        vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot, vec3 scalePivot,
                        vec3 rotatePivotTranslate, vec3 scalePivotTranslate);

} // namespace zent
