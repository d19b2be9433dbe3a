#include "zent/nodes/blendShape.h"

#include "zent/math/lanes.h"
#include "zent/math/require.h"

#include <glm/gtc/type_ptr.hpp>

#include <algorithm>
#include <type_traits>
#include <utility>

namespace zent {
namespace {

enum class ItemKind : int { kWholeShape = 0, kDeltas = 1 };

struct TargetTriple {
    ItemIndex index;
    ItemKind kind;
    float value; ///< the in-between value
};

using TargetItems = svec<TargetTriple, 8>;

template <class Map>
void collectItems(TargetItems& items, const Map& map, unsigned int target, ItemKind kind) {
    for (auto it = map.lower_bound({target, 0u}); it != map.end() && it->first.first == target; ++it) {
        items.push_back({it->first, kind, inBetweenValue(it->first.second)});
    }
}

/// The item at the upper end of the interval that the weight falls into; the last one beyond them all.
template <class Items>
std::size_t upperItem(const Items& items, float weight) {
    for (std::size_t i = 1; i < items.size(); ++i) {
        if (items[i].value >= weight - kThreshold) {
            return i;
        }
    }
    return items.size() - 1;
}

bool belowThreshold(float weight) {
    return !(std::abs(weight) >= kThreshold);
}

bool belowSignedThreshold(float weight) {
    return !(weight >= kThreshold);
}

/// Points that both sides of a difference have. The result has them, too, and can be written there.
template <class T>
unsigned commonPoints(const T& result, const T& base, const T& target) {
    requireConsistent(base, "base");
    requireConsistent(target, "target");
    const unsigned count = std::min(pointCount(base), pointCount(target));
    requireConsistent(result, "result");
    requireAtLeast("result", indexBound(result), count, "the base");
    return count;
}

/// Whole shapes without factors that are kept back, to be added together. Only meshes are.
template <class T>
class HeldTargets {
public:
    explicit HeldTargets(const T& /*base*/) {}
    static bool add(const T& /*result*/, float /*weight*/, const T& /*target*/) { return false; }
    void addTo(T& /*result*/) {}
};

/// Meshes are lists of plain floats here. They are added a strip at a time, all of them to one strip: it stays in
/// registers, and so does the base's.
template <>
class HeldTargets<Mesh> {
public:
    explicit HeldTargets(const Mesh& base) : base_(base) {}

    bool add(const Mesh& result, float weight, const Mesh& target) {
        if (belowThreshold(weight)) {
            return true;
        }
        const unsigned count = commonPoints(result, base_, target);
        if (count != 0) {
            targets_.push_back({weight, glm::value_ptr(target.points[0]), std::size_t{3} * count});
        }
        return true;
    }

    void addTo(Mesh& result) {
        if (targets_.empty()) {
            return;
        }
        float* const sum = glm::value_ptr(result.points[0]);
        const float* const base = glm::value_ptr(base_.points[0]);
        std::size_t common = targets_[0].count;
        for (const Target& target : targets_) {
            common = std::min(common, target.count);
        }
        std::size_t done = 0;
        for (; done + kStrip <= common; done += kStrip) {
            addStrip(sum + done, base + done, done);
        }
        for (const Target& target : targets_) {
            for (std::size_t i = done; i < target.count; ++i) {
                sum[i] += target.weight * (target.values[i] - base[i]);
            }
        }
        targets_.clear();
    }

private:
    static constexpr std::size_t kRegisters = 4;
    static constexpr std::size_t kStrip = 4 * kRegisters;
    struct Target {
        float weight;
        const float* values;
        std::size_t count;
    };

    void addStrip(float* sum, const float* base, std::size_t start) const {
        Lanes sums[kRegisters];
        Lanes bases[kRegisters];
        for (std::size_t r = 0; r < kRegisters; ++r) {
            sums[r] = loadLanes(sum + 4 * r);
            bases[r] = loadLanes(base + 4 * r);
        }
        for (const Target& target : targets_) {
            for (std::size_t r = 0; r < kRegisters; ++r) {
                sums[r] += target.weight * (loadLanes(target.values + start + 4 * r) - bases[r]);
            }
        }
        for (std::size_t r = 0; r < kRegisters; ++r) {
            storeLanes(sums[r], sum + 4 * r);
        }
    }

    const Mesh& base_;
    svec<Target, 8> targets_;
};

/// Hands the items that a target's weight selects, with the weight of each, to `apply`. Sorts the items by their
/// values.
template <class Items, class Apply>
void applyTarget(Items& items, float weight, float envelope, Apply apply) {
    std::sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.value < b.value; });
    const auto& first = items.front();
    if (items.size() > 1 && weight > first.value) {
        const std::size_t hi = upperItem(items, weight);
        const auto& lower = items[hi - 1];
        const float t = (weight - lower.value) / (items[hi].value - lower.value);
        // Between two items the envelope only gates, unlike on the single-item path: deliberate.
        apply(1.0f - t, lower);
        apply(t, items[hi]);
        return;
    }
    float scaled = weight;
    if (std::abs(first.value - 1.0f) > kThreshold) {
        scaled = weight / std::abs(first.value);
    }
    apply(scaled * envelope, first);
}

// A mesh takes negative weights of both kinds, a curve of whole shapes only, a surface of neither: deliberate.
template <class T>
bool isDropped(ItemKind kind, float weight) {
    const bool bothSigns = std::is_same_v<T, Mesh> || (std::is_same_v<T, Curve> && kind == ItemKind::kWholeShape);
    return bothSigns ? belowThreshold(weight) : belowSignedThreshold(weight);
}

/// As plain floats, in whole runs between two points that have a factor.
void addDifferenceInRuns(std::vector<vec3>& result, float weight, const std::vector<vec3>& base,
                         const std::vector<vec3>& target, const WeightMap& factors, std::size_t count) {
    float* const sum = glm::value_ptr(result[0]);
    const float* const from = glm::value_ptr(base[0]);
    const float* const to = glm::value_ptr(target[0]);
    const auto addRun = [&](std::size_t first, std::size_t last, float runWeight) {
        for (std::size_t f = 3 * first; f < 3 * last; ++f) {
            sum[f] += runWeight * (to[f] - from[f]);
        }
    };
    std::size_t done = 0;
    for (const auto& [i, factor] : factors) {
        if (i >= count) {
            break;
        }
        addRun(done, i, weight);
        addRun(i, std::size_t{i} + 1, weight * factor);
        done = std::size_t{i} + 1;
    }
    addRun(done, count, weight);
}

template <class T>
void addDifference(T& result, float weight, const T& base, const T& target, const WeightMap& factors) {
    const unsigned count = commonPoints(result, base, target);
    if (count == 0) {
        return;
    }
    const std::vector<vec3>& from = pointsOf(base);
    const std::vector<vec3>& to = pointsOf(target);
    PointWriter<T> write(result);
    if (!repeatsPoints(result)) {
        write(0, pointsOf(result)[0]); // for what a write changes besides
        addDifferenceInRuns(pointsOf(result), weight, from, to, factors, count);
        return;
    }
    auto factor = factors.begin();
    for (unsigned i = 0; i < count; ++i) {
        float pointWeight = weight;
        if (factor != factors.end() && factor->first == i) {
            pointWeight = weight * factor->second;
            ++factor;
        }
        write(i, pointsOf(result)[i] + pointWeight * (to[i] - from[i]));
    }
}

template <class T>
void addDeltas(T& result, float weight, const DeltaList& deltas) {
    requireConsistent(result, "base");
    const std::size_t bound = indexBound(result);
    const std::size_t count = deltas.size();
    PointWriter<T> write(result);
    for (std::size_t k = 0; k < count; ++k) {
        const auto& [i, delta] = deltas[k];
        requireIndex("deltas", k, i, bound, "the base");
        write(i, pointsOf(result)[i] + weight * delta);
    }
}

} // namespace

void IMPL_blend_target(Mesh& result, float weight, Mesh const& base, Mesh const& target, WeightMap const& factors) {
    HeldTargets<Mesh> held(base);
    if (factors.empty()) {
        held.add(result, weight, target);
        held.addTo(result);
    } else if (!isDropped<Mesh>(ItemKind::kWholeShape, weight)) {
        addDifference(result, weight, base, target, factors);
    }
}

void IMPL_blend_target(Curve& result, float weight, Curve const& base, Curve const& target, WeightMap const& factors) {
    if (!isDropped<Curve>(ItemKind::kWholeShape, weight)) {
        addDifference(result, weight, base, target, factors);
    }
}

void IMPL_blend_target(Surface& result, float weight, Surface const& base, Surface const& target,
                       WeightMap const& factors) {
    if (!isDropped<Surface>(ItemKind::kWholeShape, weight)) {
        addDifference(result, weight, base, target, factors);
    }
}

void IMPL_blend_target(Mesh& result, float weight, DeltaList const& deltas) {
    if (!isDropped<Mesh>(ItemKind::kDeltas, weight)) {
        addDeltas(result, weight, deltas);
    }
}

void IMPL_blend_target(Curve& result, float weight, DeltaList const& deltas) {
    if (!isDropped<Curve>(ItemKind::kDeltas, weight)) {
        addDeltas(result, weight, deltas);
    }
}

void IMPL_blend_target(Surface& result, float weight, DeltaList const& deltas) {
    if (!isDropped<Surface>(ItemKind::kDeltas, weight)) {
        addDeltas(result, weight, deltas);
    }
}

// An item index below 5000 wraps to a huge value; nothing guards against it.
float inBetweenValue(unsigned int itemIndex) {
    return static_cast<float>(itemIndex - 5000u) * 0.001f;
}

template <class T>
T blendShape(float envelope, T const& base, WeightMap weights, TargetShapes<T> shapes, TargetDeltas deltas,
             TargetWeightMaps weightMaps) {
    T result = base;
    if (!(envelope >= kThreshold)) {
        return result;
    }
    const WeightMap noFactors;
    HeldTargets<T> held(base);
    const auto apply = [&](float weight, const TargetTriple& item) {
        if (item.kind == ItemKind::kDeltas) {
            // The target's weight map scales whole shapes only: deliberate.
            held.addTo(result);
            IMPL_blend_target(result, weight, deltas.at(item.index).get());
            return;
        }
        const auto found = weightMaps.find(item.index.first);
        const WeightMap& factors = found == weightMaps.end() ? noFactors : found->second;
        const T& target = shapes.at(item.index).get();
        if (!factors.empty() || !held.add(result, weight, target)) {
            held.addTo(result);
            IMPL_blend_target(result, weight, base, target, factors);
        }
    };

    for (const auto& [target, weight] : weights) {
        TargetItems items;
        collectItems(items, shapes, target, ItemKind::kWholeShape);
        collectItems(items, deltas, target, ItemKind::kDeltas);
        if (items.empty()) {
            continue;
        }
        applyTarget(items, weight, envelope, apply);
    }
    held.addTo(result);
    return result;
}

template Mesh blendShape(float, Mesh const&, WeightMap, TargetShapes<Mesh>, TargetDeltas, TargetWeightMaps);
template Curve blendShape(float, Curve const&, WeightMap, TargetShapes<Curve>, TargetDeltas, TargetWeightMaps);
template Surface blendShape(float, Surface const&, WeightMap, TargetShapes<Surface>, TargetDeltas, TargetWeightMaps);

template <class T>
void blendPointTarget(vec3& result, float envelope, vec3 base, float weight, PointItems& items) {
    applyTarget(items, weight, envelope, [&](float itemWeight, const PointItem& item) {
        if (isDropped<T>(item.isDelta ? ItemKind::kDeltas : ItemKind::kWholeShape, itemWeight)) {
            return;
        }
        result += item.isDelta ? itemWeight * item.vector : itemWeight * item.factor * (item.vector - base);
    });
}

template void blendPointTarget<Mesh>(vec3&, float, vec3, float, PointItems&);
template void blendPointTarget<Curve>(vec3&, float, vec3, float, PointItems&);
template void blendPointTarget<Surface>(vec3&, float, vec3, float, PointItems&);

Mesh blendShapeMesh(float envelope, Mesh const& base, WeightMap weights, TargetShapes<Mesh> shapes, TargetDeltas deltas,
                    TargetWeightMaps weightMaps) {
    return blendShape<Mesh>(envelope, base, std::move(weights), std::move(shapes), std::move(deltas),
                            std::move(weightMaps));
}

Curve blendShapeCurve(float envelope, Curve const& base, WeightMap weights, TargetShapes<Curve> shapes,
                      TargetDeltas deltas, TargetWeightMaps weightMaps) {
    return blendShape<Curve>(envelope, base, std::move(weights), std::move(shapes), std::move(deltas),
                             std::move(weightMaps));
}

Surface blendShapeSurface(float envelope, Surface const& base, WeightMap weights, TargetShapes<Surface> shapes,
                          TargetDeltas deltas, TargetWeightMaps weightMaps) {
    return blendShape<Surface>(envelope, base, std::move(weights), std::move(shapes), std::move(deltas),
                               std::move(weightMaps));
}

} // namespace zent
