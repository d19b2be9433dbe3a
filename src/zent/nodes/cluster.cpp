#include "zent/nodes/cluster.h"

#include "zent/math/lanes.h"
#include "zent/math/require.h"
#include "zent/math/rotation.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zent {
namespace {

using PointIndices = std::vector<unsigned int>;
/// Point index and weight, ascending.
using Members = std::vector<std::pair<unsigned int, float>>;

constexpr quat kIdentity(1.0f, 0.0f, 0.0f, 0.0f);

bool untouched(float weight) {
    return std::abs(weight) < kThreshold;
}

/// A member that moves has to be a point of the geometry; the weights have the last word on which ones do.
void requireMembers(const PointIndices& indices, const WeightMap& weights, std::size_t bound) {
    for (std::size_t k = 0; k < indices.size(); ++k) {
        if (indices[k] >= bound && weights.count(indices[k]) == 0) {
            requireIndex("indices", k, indices[k], bound, "the geometry");
        }
    }
    std::size_t position = 0;
    for (const auto& [index, weight] : weights) {
        if (!untouched(weight)) {
            requireIndex("weights", position, index, bound, "the geometry");
        }
        ++position;
    }
}

/// The listed points at weight 1, with the weights written over them; a weight alone makes a member.
Members effectiveMembers(const PointIndices& listed, const WeightMap& weights) {
    Members members;
    members.reserve(listed.size() + weights.size());
    auto weight = weights.begin();
    const auto addWeightsBelow = [&](unsigned int index) {
        for (; weight != weights.end() && weight->first < index; ++weight) {
            members.emplace_back(*weight);
        }
    };
    for (const unsigned int index : listed) {
        addWeightsBelow(index);
        if (!members.empty() && members.back().first == index) {
            continue;
        }
        if (weight != weights.end() && weight->first == index) {
            members.emplace_back(*weight++);
        } else {
            members.emplace_back(index, 1.0f);
        }
    }
    members.insert(members.end(), weight, weights.end());
    return members;
}

// Through angles and back: the order takes part in the angles only, so another than xyz changes the rotation.
quat fullRotation(vec3 rotate, int rotateOrder) {
    const quat rotation = eulerToQuat(rotate, kRotateXYZ);
    return eulerToQuat(eulerAngles(rotation, static_cast<RotateOrder>(rotateOrder)), kRotateXYZ);
}

// What follows is glm's arithmetic to the bit, a point's numbers side by side.
Lanes column(const mat4& matrix, int i) {
    return loadLanes(&matrix[i].x);
}

Lanes cross(const Lanes& a, const Lanes& b) {
    const auto yzx = [](const Lanes& v) { return Lanes{v[1], v[2], v[0], v[3]}; };
    const auto zxy = [](const Lanes& v) { return Lanes{v[2], v[0], v[1], v[3]}; };
    return yzx(a) * zxy(b) - yzx(b) * zxy(a);
}

/// By a quaternion in the order x, y, z, w.
Lanes turned(const Lanes& rotation, const Lanes& point) {
    const Lanes across = cross(rotation, point);
    return point + (across * rotation[3] + cross(rotation, across)) * 2.0f;
}

bool whole(float weight) {
    return std::abs(weight - 1.0f) < kThreshold;
}

} // namespace

template <class T>
T& _cluster(T& geometry, boost::optional<std::vector<unsigned int>> indices, mat4 first, mat4 second, int angleMode,
            WeightMap weights, vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
            vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate) {
    requireConsistent(geometry, "geometry");
    if (!indices) {
        indices.emplace(pointCount(geometry));
        std::iota(indices->begin(), indices->end(), 0u);
    }
    requireMembers(*indices, weights, indexBound(geometry));
    std::sort(indices->begin(), indices->end());

    const PointCluster move(first, second, angleMode, translate, rotate, rotateOrder, scale, rotatePivot, scalePivot,
                            rotatePivotTranslate, scalePivotTranslate);
    vec4 scales = move.scales();
    PointWriter<T> write(geometry);
    for (const auto& [i, weight] : effectiveMembers(*indices, weights)) {
        if (untouched(weight)) {
            continue;
        }
        // Not reset from point to point, so that the scale compounds over the fractional ones: deliberate.
        write(i, move(pointsOf(geometry)[i], weight, scales));
    }
    return geometry;
}

PointCluster::PointCluster(mat4 const& first, mat4 const& second, int angleMode, vec3 translate, vec3 rotate,
                           int rotateOrder, vec3 scale, vec3 rotatePivot, vec3 scalePivot, vec3 rotatePivotTranslate,
                           vec3 scalePivotTranslate)
    : full_(first * second),
      // Modes 1 and 2 sweep half a turn less where the rotation goes beyond half a turn (1) or doesn't (2).
      rotation_(kIdentity, fullRotation(rotate, rotateOrder), angleMode == 2 ? -1 : 0,
                angleMode == 1 || angleMode == 2),
      fullRotation_(rotation_.b().x, rotation_.b().y, rotation_.b().z, rotation_.b().w),
      rotates_(static_cast<unsigned>(angleMode) <= 3u), scales_(scale, 0.0f),
      translate_(translate + rotatePivotTranslate, 0.0f), pivotOffset_(scalePivot - rotatePivot, 0.0f),
      rotatePivot_(rotatePivot, 0.0f), scalePivot_(scalePivot, 0.0f), scalePivotTranslate_(scalePivotTranslate, 0.0f) {}

vec3 PointCluster::operator()(vec3 point, float weight) const {
    vec4 scales = scales_;
    return (*this)(point, weight, scales);
}

vec3 PointCluster::operator()(vec3 point, float weight, vec4& scales) const {
    if (untouched(weight)) {
        return point;
    }
    if (whole(weight)) {
        return toPoint((column(full_, 0) * point.x + column(full_, 1) * point.y) +
                       (column(full_, 2) * point.z + column(full_, 3)));
    }
    Lanes rotation = {0.0f, 0.0f, 0.0f, 1.0f};
    if (rotates_) {
        const auto [ofNone, ofFull] = rotation_.shares(weight);
        rotation = ofNone * rotation + ofFull * loadLanes(&fullRotation_.x);
    }
    const Lanes own = 1.0f + weight * (loadLanes(&scales.x) - 1.0f);
    storeLanes(own, &scales.x);
    const Lanes scaled = (pointLanes(point) - loadLanes(&scalePivot_.x)) * own + loadLanes(&pivotOffset_.x) +
                         weight * loadLanes(&scalePivotTranslate_.x);
    return toPoint(loadLanes(&rotatePivot_.x) + turned(rotation, scaled) + weight * loadLanes(&translate_.x));
}

PointCluster pointCluster(mat4 const& first, mat4 const& second, int angleMode, vec3 translate, vec3 rotate,
                          int rotateOrder, vec3 scale, vec3 rotatePivot, vec3 scalePivot, vec3 rotatePivotTranslate,
                          vec3 scalePivotTranslate) {
    return {first,
            second,
            angleMode,
            translate,
            rotate,
            rotateOrder,
            scale,
            rotatePivot,
            scalePivot,
            rotatePivotTranslate,
            scalePivotTranslate};
}

template Curve& _cluster(Curve&, boost::optional<std::vector<unsigned int>>, mat4, mat4, int, WeightMap, vec3, vec3,
                         int, vec3, vec3, vec3, vec3, vec3);
template Surface& _cluster(Surface&, boost::optional<std::vector<unsigned int>>, mat4, mat4, int, WeightMap, vec3, vec3,
                           int, vec3, vec3, vec3, vec3, vec3);
template Lattice& _cluster(Lattice&, boost::optional<std::vector<unsigned int>>, mat4, mat4, int, WeightMap, vec3, vec3,
                           int, vec3, vec3, vec3, vec3, vec3);

Curve& clusterCurve(Curve& geometry, std::vector<unsigned int> indices, mat4 first, mat4 second, int angleMode,
                    WeightMap weights, vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
                    vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate) {
    return _cluster<Curve>(geometry, std::move(indices), first, second, angleMode, std::move(weights), translate,
                           rotate, rotateOrder, scale, rotatePivot, scalePivot, rotatePivotTranslate,
                           scalePivotTranslate);
}

Lattice& clusterLattice(Lattice& geometry, std::vector<unsigned int> indices, mat4 first, mat4 second, int angleMode,
                        WeightMap weights, vec3 translate, vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
                        vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate) {
    return _cluster<Lattice>(geometry, std::move(indices), first, second, angleMode, std::move(weights), translate,
                             rotate, rotateOrder, scale, rotatePivot, scalePivot, rotatePivotTranslate,
                             scalePivotTranslate);
}

Curve& clusterFullCurve(Curve& geometry, mat4 first, mat4 second, int angleMode, WeightMap weights, vec3 translate,
                        vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot, vec3 scalePivot,
                        vec3 rotatePivotTranslate, vec3 scalePivotTranslate) {
    return _cluster<Curve>(geometry, boost::none, first, second, angleMode, std::move(weights), translate, rotate,
                           rotateOrder, scale, rotatePivot, scalePivot, rotatePivotTranslate, scalePivotTranslate);
}

} // namespace zent
