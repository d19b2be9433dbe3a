#include "zent/nodes/cluster.h"

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

/// The channels of a cluster's handle.
struct Handle {
    vec3 translate;
    vec3 rotate;
    int rotateOrder;
    vec3 scale;
    vec3 rotatePivot;
    vec3 scalePivot;
    vec3 rotatePivotTranslate;
    vec3 scalePivotTranslate;
};

/// Moves points of fractional weights, one after the other.
class PartialHandle {
public:
    PartialHandle(const Handle& handle, int angleMode)
        : handle_(handle), rotates_(static_cast<unsigned>(angleMode) <= 3u),
          rotation_(quat(1.0f, 0.0f, 0.0f, 0.0f), fullRotation(handle), angleMode == 2 ? -1 : 0,
                    angleMode == 1 || angleMode == 2),
          translate_(handle.translate + handle.rotatePivotTranslate),
          pivotOffset_(handle.scalePivot - handle.rotatePivot), scale_(handle.scale) {}

    vec3 operator()(vec3 point, float weight) {
        // Not reset from point to point, so that the scale compounds over the fractional ones: deliberate.
        scale_ = 1.0f + weight * (scale_ - 1.0f);
        const vec3 scaled = (point - handle_.scalePivot) * scale_ + pivotOffset_ + weight * handle_.scalePivotTranslate;
        // Modes 1 and 2 sweep half a turn less where the rotation goes beyond half a turn (1) or doesn't (2).
        const quat rotation = rotates_ ? rotation_(weight) : quat(1.0f, 0.0f, 0.0f, 0.0f);
        return handle_.rotatePivot + rotation * scaled + weight * translate_;
    }

private:
    // Through angles and back: the order takes part in the angles only, so another than xyz changes the rotation.
    static quat fullRotation(const Handle& handle) {
        const quat rotation = eulerToQuat(handle.rotate, kRotateXYZ);
        return eulerToQuat(eulerAngles(rotation, static_cast<RotateOrder>(handle.rotateOrder)), kRotateXYZ);
    }

    Handle handle_;
    bool rotates_;
    Slerp rotation_;
    vec3 translate_;
    vec3 pivotOffset_;
    vec3 scale_;
};

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

    const mat4 full = first * second;
    PartialHandle partial(
        {translate, rotate, rotateOrder, scale, rotatePivot, scalePivot, rotatePivotTranslate, scalePivotTranslate},
        angleMode);
    PointWriter<T> write(geometry);
    for (const auto& [i, weight] : effectiveMembers(*indices, weights)) {
        if (untouched(weight)) {
            continue;
        }
        const vec3 point = pointsOf(geometry)[i];
        write(i, whole(weight) ? transformPoint(full, point) : partial(point, weight));
    }
    return geometry;
}

std::function<vec3(vec3, float)> pointCluster(mat4 const& first, mat4 const& second, int angleMode, vec3 translate,
                                              vec3 rotate, int rotateOrder, vec3 scale, vec3 rotatePivot,
                                              vec3 scalePivot, vec3 rotatePivotTranslate, vec3 scalePivotTranslate) {
    const PartialHandle handle(
        {translate, rotate, rotateOrder, scale, rotatePivot, scalePivot, rotatePivotTranslate, scalePivotTranslate},
        angleMode);
    return [handle, full = first * second](vec3 point, float weight) {
        if (untouched(weight)) {
            return point;
        }
        PartialHandle partial = handle; // with the scale of a first point
        return whole(weight) ? transformPoint(full, point) : partial(point, weight);
    };
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
