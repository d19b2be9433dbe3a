#include "zent/nodes/skin.h"

#include "zent/math/lanes.h"
#include "zent/math/require.h"
#include "zent/nodes/skinBlock.h"

#include <algorithm>
#include <tuple>
#include <type_traits>
#include <utility>

namespace zent {
namespace {

/// How many weights are gone through before rows of points are looked for again: the more, the longer there were none.
constexpr std::size_t kLeastPause = 32;
constexpr std::size_t kMostPause = 1024;

using SkinPalette = std::vector<Influence>;

Lanes carried(const mat4& influence, vec3 p) {
    const float* const columns = &influence[0][0];
    return loadLanes(columns) * p.x + loadLanes(columns + 4) * p.y + loadLanes(columns + 8) * p.z +
           loadLanes(columns + 12);
}

mat4 combinedMatrix(const mat4& worldToGeom, const mat4& matrix, const mat4& bindPreMatrix, const mat4& geomMatrix) {
    return worldToGeom * matrix * bindPreMatrix * geomMatrix;
}

Influence influenceOf(const mat4& combined) {
    return {{pointLanes(vec3(combined[0])), pointLanes(vec3(combined[1])), pointLanes(vec3(combined[2])),
             pointLanes(vec3(combined[3]))}};
}

SkinPalette combineInfluences(const mat4& geomMatrix, const std::vector<mat4>& matrix,
                              const std::vector<mat4>& bindPreMatrix) {
    const mat4 worldToGeom = glm::inverse(geomMatrix);
    SkinPalette palette(matrix.size());
    for (std::size_t i = 0; i < matrix.size(); ++i) {
        palette[i] = influenceOf(combinedMatrix(worldToGeom, matrix[i], bindPreMatrix[i], geomMatrix));
    }
    return palette;
}

template <class T>
T cleared(const T& input) {
    T result = input;
    PointWriter<T> write(result);
    for (unsigned i = 0; i < pointCount(result); ++i) {
        write(i, vec3(0.0f));
    }
    return result;
}

// A skinned mesh comes back with identity matrices, the other shapes keep theirs: deliberate.
template <>
Mesh cleared(const Mesh& input) {
    return Mesh(input.points.size());
}

/// Adds the weights from `k` to `last`, and those of the last one's point; gives the next.
template <class Write>
std::size_t addPointByPoint(const SkinSums& skin, Write& write, std::size_t k, std::size_t last) {
    const vec3* const from = skin.from;
    const vec3* const to = skin.sums;
    const std::size_t pointBound = skin.pointCount;
    const Influence* const influences = skin.influences;
    const std::size_t influenceBound = skin.influenceCount;
    const auto* const tuples = skin.weights;
    const std::size_t count = skin.weightCount;
    // The tuples mostly stand together by point, whose sum is then written once, or else by influence, whose columns
    // are then read once.
    while (k < last) {
        auto [point, influence, weight] = tuples[k];
        requireIndex("weights", k, point, pointBound, "the input");
        requireIndex("weights' influences", k, influence, influenceBound, "matrix");
        if (k + 1 < count && std::get<0>(tuples[k + 1]) == point) {
            const vec3 position = from[point];
            Lanes sum = pointLanes(to[point]);
            do {
                const auto& [p, i, w] = tuples[k];
                requireIndex("weights' influences", k, i, influenceBound, "matrix");
                sum += w * influences[i](position);
                ++k;
            } while (k < count && std::get<0>(tuples[k]) == point);
            write(point, toPoint(sum));
        } else {
            const Influence chosen = influences[influence];
            do {
                requireIndex("weights", k, point, pointBound, "the input");
                write(point, toPoint(pointLanes(to[point]) + weight * chosen(from[point])));
                if (++k == count) {
                    break;
                }
                point = std::get<0>(tuples[k]);
                weight = std::get<2>(tuples[k]);
            } while (std::get<1>(tuples[k]) == influence);
        }
    }
    return k;
}

/// To points that nothing repeats.
void addWeights(const SkinSums& skin) {
    const auto write = [sums = skin.sums](unsigned i, vec3 point) { sums[i] = point; };
    if (!canAddWide()) {
        addPointByPoint(skin, write, 0, skin.weightCount);
        return;
    }
    std::size_t pause = kLeastPause;
    for (std::size_t k = 0; k < skin.weightCount;) {
        const std::size_t first = std::exchange(k, addRows(skin, k));
        pause = k > first ? kLeastPause : std::min(2 * pause, kMostPause);
        k = addPointByPoint(skin, write, k, std::min(k + pause, skin.weightCount));
    }
}

template <class T>
void addWeights(const T& input, const SkinWeights& weights, const SkinPalette& palette, T& result) {
    const SkinSums skin{weights.data(),         weights.size(),          palette.data(),   palette.size(),
                        pointsOf(input).data(), pointsOf(result).data(), indexBound(input)};
    if constexpr (std::is_same_v<T, Mesh>) {
        addWeights(skin);
    } else {
        PointWriter<T> write(result);
        addPointByPoint(skin, write, 0, weights.size());
    }
}

} // namespace

template <class T>
T IMPL_skin(float envelope, T const& input, mat4 const& geomMatrix, std::vector<mat4> const& matrix,
            std::vector<mat4> const& bindPreMatrix, SkinWeights const& weights) {
    // The envelope only gates: there is no blend with the input.
    if (!(envelope >= kThreshold)) {
        return input;
    }
    requireConsistent(input, "input");
    requireAtLeast("bindPreMatrix", bindPreMatrix.size(), matrix.size(), "matrix");
    const SkinPalette palette = combineInfluences(geomMatrix, matrix, bindPreMatrix);
    T result = cleared(input);
    addWeights(input, weights, palette, result);
    return result;
}

template Mesh IMPL_skin(float, Mesh const&, mat4 const&, std::vector<mat4> const&, std::vector<mat4> const&,
                        SkinWeights const&);
template Curve IMPL_skin(float, Curve const&, mat4 const&, std::vector<mat4> const&, std::vector<mat4> const&,
                         SkinWeights const&);
template Surface IMPL_skin(float, Surface const&, mat4 const&, std::vector<mat4> const&, std::vector<mat4> const&,
                           SkinWeights const&);
template Lattice IMPL_skin(float, Lattice const&, mat4 const&, std::vector<mat4> const&, std::vector<mat4> const&,
                           SkinWeights const&);

template <class T>
T skin(float envelope, T const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
       std::vector<mat4> bindPreMatrix, SkinWeights const& weights) {
    return IMPL_skin<T>(envelope, input, geomMatrix, matrix, bindPreMatrix, weights);
}

template Mesh skin(float, Mesh const&, mat4 const&, std::vector<mat4>, std::vector<mat4>, SkinWeights const&);
template Curve skin(float, Curve const&, mat4 const&, std::vector<mat4>, std::vector<mat4>, SkinWeights const&);
template Surface skin(float, Surface const&, mat4 const&, std::vector<mat4>, std::vector<mat4>, SkinWeights const&);
template Lattice skin(float, Lattice const&, mat4 const&, std::vector<mat4>, std::vector<mat4>, SkinWeights const&);

std::vector<mat4> skinPalette(mat4 const& geomMatrix, std::vector<mat4> const& matrix,
                              std::vector<mat4> const& bindPreMatrix) {
    std::vector<mat4> palette;
    skinPalette(geomMatrix, matrix, bindPreMatrix, palette);
    return palette;
}

void skinPalette(mat4 const& geomMatrix, std::vector<mat4> const& matrix, std::vector<mat4> const& bindPreMatrix,
                 std::vector<mat4>& palette) {
    const mat4 worldToGeom = glm::inverse(geomMatrix);
    palette.resize(std::min(matrix.size(), bindPreMatrix.size()));
    for (std::size_t i = 0; i < palette.size(); ++i) {
        palette[i] = combinedMatrix(worldToGeom, matrix[i], bindPreMatrix[i], geomMatrix);
    }
}

vec3 skinPoint(vec3 point, std::vector<mat4> const& palette, const PointWeight* first, const PointWeight* last) {
    Lanes sum = {};
    for (; first != last; ++first) {
        sum += first->second * carried(palette[first->first], point);
    }
    return toPoint(sum);
}

std::vector<vec3> skinPoints(const vec3* points, std::size_t count, std::vector<mat4> const& palette,
                             SkinWeights const& weights) {
    std::vector<vec3> skinned(count, vec3(0.0f));
    SkinPalette influences(palette.size());
    std::transform(palette.begin(), palette.end(), influences.begin(), influenceOf);
    addWeights({weights.data(), weights.size(), influences.data(), influences.size(), points, skinned.data(), count});
    return skinned;
}

Mesh skinMesh(float envelope, Mesh const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
              std::vector<mat4> bindPreMatrix, SkinWeights const& weights) {
    return skin<Mesh>(envelope, input, geomMatrix, std::move(matrix), std::move(bindPreMatrix), weights);
}

Curve skinCurve(float envelope, Curve const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
                std::vector<mat4> bindPreMatrix, SkinWeights const& weights) {
    return skin<Curve>(envelope, input, geomMatrix, std::move(matrix), std::move(bindPreMatrix), weights);
}

Surface skinSurface(float envelope, Surface const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
                    std::vector<mat4> bindPreMatrix, SkinWeights const& weights) {
    return skin<Surface>(envelope, input, geomMatrix, std::move(matrix), std::move(bindPreMatrix), weights);
}

Lattice skinLattice(float envelope, Lattice const& input, mat4 const& geomMatrix, std::vector<mat4> matrix,
                    std::vector<mat4> bindPreMatrix, SkinWeights const& weights) {
    return skin<Lattice>(envelope, input, geomMatrix, std::move(matrix), std::move(bindPreMatrix), weights);
}

} // namespace zent
