#include "zent/nodes/ffd.h"

#include "zent/math/lanes.h"
#include "zent/math/processor.h"
#include "zent/math/require.h"
#include "zent/math/rotation.h"

#include <glm/gtc/type_ptr.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>

namespace zent {
namespace {

constexpr unsigned kMaxWindow = 11;

constexpr std::array<std::array<unsigned, kMaxWindow>, kMaxWindow> kBinomials = [] {
    std::array<std::array<unsigned, kMaxWindow>, kMaxWindow> table{};
    for (unsigned n = 0; n < kMaxWindow; ++n) {
        table[n][0] = 1;
        for (unsigned k = 1; k <= n; ++k) {
            table[n][k] = table[n - 1][k - 1] + table[n - 1][k];
        }
    }
    return table;
}();

using Powers = std::array<float, kMaxWindow>;

/// x to the powers 0 to 10, by the products of `pown`.
Powers powersOf(float x) {
    const float x2 = x * x;
    const float x4 = x2 * x2;
    const float x8 = x4 * x4;
    return {1.0f, x, x2, x2 * x, x4, x4 * x, x4 * x2, x4 * x2 * x, x8, x8 * x, x8 * x2};
}

/// The lattice points of one direction that a point hangs on.
struct Direction {
    unsigned count;  ///< of the lattice
    unsigned window; ///< of those, how many take part
    void (*bernstein)(float, float*);
};

struct Window {
    unsigned start;
    std::array<float, kMaxWindow> weight;
};

/// The first lattice point of the window around a coordinate: the cell's, limited to where the window fits.
unsigned windowStart(Direction direction, float coordinate) {
    const float cell = std::floor(coordinate * static_cast<float>(direction.count - 1u));
    const unsigned last = direction.count - direction.window;
    if (!(cell >= 0.0f)) {
        return 0;
    }
    return cell < static_cast<float>(last) ? static_cast<unsigned>(cell) : last;
}

/// The Bernstein weights of a window of N points.
template <unsigned N>
void bernstein(float v, float* weights) {
    const Powers rising = powersOf(v);
    const Powers falling = powersOf(1.0f - v);
    for (unsigned i = 0; i < N; ++i) {
        weights[i] = static_cast<float>(kBinomials[N - 1][i]) * rising[i] * falling[N - 1 - i];
    }
}

using Bernstein = void (*)(float, float*);

/// By window; there is nothing to weigh in an empty one.
template <std::size_t... N>
constexpr std::array<Bernstein, kMaxWindow + 1> bernsteins(std::index_sequence<N...>) {
    return {{[](float, float*) {}, &bernstein<N + 1>...}};
}

constexpr std::array<Bernstein, kMaxWindow + 1> kBernsteins = bernsteins(std::make_index_sequence<kMaxWindow>());

void weighWindow(const Direction& direction, float coordinate, Window& window) {
    window.start = 0;
    float v = coordinate;
    // A window of the whole direction starts at 0, and its own coordinate is the lattice's.
    if (direction.window != direction.count && direction.window != 0) {
        window.start = windowStart(direction, coordinate);
        const float spacing = 1.0f / static_cast<float>(direction.count - 1u);
        v = (coordinate - static_cast<float>(window.start) * spacing) /
            (spacing * static_cast<float>(direction.window - 1));
    }
    direction.bernstein(v, window.weight.data());
}

struct LatticeWindows {
    Window s, t, u;
};

/// The weighted sum of a window's lattice points. S runs along each row in memory: rows are summed as plain floats
/// first, points last. Outside the lattice, where the weights are large and of both signs, this order and a sum of
/// triple products differ (by up to 3e-3 for 8 divisions); this one rounds less.
template <unsigned WindowS>
vec3 sumWindow(const Lattice& lattice, unsigned windowT, unsigned windowU, const LatticeWindows& at) {
    constexpr unsigned kFloats = 3 * WindowS;
    constexpr unsigned kRegisters = kFloats / 4;
    constexpr unsigned kRest = kFloats % 4;
    Lanes slab[kRegisters + 1] = {};
    float slabRest[4] = {};
    for (unsigned k = 0; k < windowU; ++k) {
        const std::size_t firstRow = at.t.start + std::size_t{lattice.t} * (at.u.start + k);
        const float* row = glm::value_ptr(lattice.points[at.s.start + lattice.s * firstRow]);
        // Layer by layer, so that the sums of one don't wait for those of another.
        Lanes layer[kRegisters + 1] = {};
        float layerRest[4] = {};
        for (unsigned j = 0; j < windowT; ++j, row += std::size_t{3} * lattice.s) {
            for (unsigned r = 0; r < kRegisters; ++r) {
                layer[r] += at.t.weight[j] * loadLanes(row + std::size_t{4} * r);
            }
            for (unsigned f = 0; f < kRest; ++f) {
                layerRest[f] += at.t.weight[j] * row[4 * kRegisters + f];
            }
        }
        for (unsigned r = 0; r < kRegisters; ++r) {
            slab[r] += at.u.weight[k] * layer[r];
        }
        for (unsigned f = 0; f < kRest; ++f) {
            slabRest[f] += at.u.weight[k] * layerRest[f];
        }
    }
    float sums[4 * (kRegisters + 1)];
    std::memcpy(sums, slab, sizeof slab);
    std::memcpy(sums + 4 * kRegisters, slabRest, sizeof slabRest);
    vec3 sum(0.0f);
    for (unsigned i = 0; i < WindowS; ++i) {
        sum += at.s.weight[i] * vec3(sums[3 * i], sums[3 * i + 1], sums[3 * i + 2]);
    }
    return sum;
}

using WindowSum = vec3 (*)(const Lattice&, unsigned, unsigned, const LatticeWindows&);

template <std::size_t... WindowS>
constexpr std::array<WindowSum, kMaxWindow + 1> windowSums(std::index_sequence<WindowS...>) {
    return {{[](const Lattice&, unsigned, unsigned, const LatticeWindows&) { return vec3(0.0f); },
             &sumWindow<WindowS + 1>...}};
}

constexpr std::array<WindowSum, kMaxWindow + 1> kWindowSums = windowSums(std::make_index_sequence<kMaxWindow>());

#define ZENT_BLOCK portable
#define ZENT_BLOCK_LANES kLanes
#define ZENT_BLOCK_TARGET
#include "zent/nodes/latticeBlock.inl"
#undef ZENT_BLOCK
#undef ZENT_BLOCK_LANES
#undef ZENT_BLOCK_TARGET

/// A way to deform `lanes` points at once.
struct BlockKernel {
    std::size_t lanes;
    void (*deform)(const Lattice&, const mat4&, const mat4&, float*);
};

#ifdef ZENT_X86
#define ZENT_BLOCK avx2
#define ZENT_BLOCK_LANES 8
#define ZENT_BLOCK_TARGET __attribute__((target("avx2")))
#include "zent/nodes/latticeBlock.inl"
#undef ZENT_BLOCK
#undef ZENT_BLOCK_LANES
#undef ZENT_BLOCK_TARGET

constexpr std::size_t kMaxBlock = 8;

const BlockKernel& blockKernel() {
    static const BlockKernel kernel =
        processor().hasAvx2 ? BlockKernel{8, &avx2::deform} : BlockKernel{kLanes, &portable::deform};
    return kernel;
}
#else
constexpr std::size_t kMaxBlock = kLanes;

const BlockKernel& blockKernel() {
    static const BlockKernel kernel{kLanes, &portable::deform};
    return kernel;
}
#endif

Direction latticeDirection(unsigned count, bool local, unsigned influence) {
    const unsigned window = local ? std::min(count, influence) : count;
    return {count, window, window > kMaxWindow ? nullptr : kBernsteins[window]};
}

/// The way of a point through the lattice, set up once for all points.
class LatticeMap {
public:
    LatticeMap(const Lattice& lattice, const mat4& toLattice, const mat4& fromLattice, bool local, unsigned influenceS,
               unsigned influenceT, unsigned influenceU)
        : lattice_(&lattice), toLattice_(toLattice), fromLattice_(fromLattice),
          s_(latticeDirection(lattice.s, local, influenceS)), t_(latticeDirection(lattice.t, local, influenceT)),
          u_(latticeDirection(lattice.u, local, influenceU)),
          sum_(kWindowSums[t_.window == 0 || u_.window == 0 ? 0 : s_.window]) {}

    vec3 operator()(vec3 point) const {
        const vec3 coordinate = transformPoint(toLattice_, point) + 0.5f;
        LatticeWindows at;
        weighWindow(s_, coordinate.x, at.s);
        weighWindow(t_, coordinate.y, at.t);
        weighWindow(u_, coordinate.z, at.u);
        return transformPoint(fromLattice_, sum_(*lattice_, t_.window, u_.window, at));
    }

    /// Whether each point hangs on the whole lattice, so that many can be deformed side by side.
    bool isWhole() const {
        const auto whole = [](const Direction& d) { return d.window != 0 && d.window == d.count; };
        return whole(s_) && whole(t_) && whole(u_);
    }

    void deformBlock(const BlockKernel& kernel, float* values) const {
        kernel.deform(*lattice_, toLattice_, fromLattice_, values);
    }

private:
    const Lattice* lattice_;
    mat4 toLattice_;
    mat4 fromLattice_;
    Direction s_, t_, u_;
    WindowSum sum_;
};

void requireLatticeWindows(const Lattice& lattice, bool local, unsigned influenceS, unsigned influenceT,
                           unsigned influenceU) {
    const Direction directions[] = {latticeDirection(lattice.s, local, influenceS),
                                    latticeDirection(lattice.t, local, influenceT),
                                    latticeDirection(lattice.u, local, influenceU)};
    bool empty = false;
    for (std::size_t i = 0; i < 3; ++i) {
        const unsigned window = directions[i].window;
        if (window > kMaxWindow) {
            fail("lattice window[" + std::to_string(i) + "] is " + std::to_string(window) + ", the polynomials have " +
                 std::to_string(kMaxWindow));
        }
        empty = empty || window == 0;
    }
    if (!empty) {
        requireAddressable(lattice, "lattice");
    }
}

LatticeMap latticeMap(const mat4& objectToWorld, const mat4& worldToObject, const Lattice& lattice,
                      const mat4& deformedLatticeMatrix, const mat4& baseLatticeMatrix, bool local, unsigned influenceS,
                      unsigned influenceT, unsigned influenceU) {
    requireLatticeWindows(lattice, local, influenceS, influenceT, influenceU);
    return {lattice,
            glm::inverse(baseLatticeMatrix) * objectToWorld,
            worldToObject * deformedLatticeMatrix,
            local,
            influenceS,
            influenceT,
            influenceU};
}

/// Points gathered until a block is full, each coordinate side by side.
template <class T>
class BlockedPoints {
public:
    BlockedPoints(T& geometry, const LatticeMap& map) : geometry_(geometry), map_(map), write_(geometry) {}

    void add(unsigned i) {
        place(count_, i);
        if (++count_ == kernel_.lanes) {
            flush();
        }
    }

    void flush() {
        if (count_ == 0) {
            return;
        }
        for (std::size_t lane = count_; lane < kernel_.lanes; ++lane) {
            place(lane, indices_[0]); // any point; its result is left
        }
        map_.deformBlock(kernel_, values_.data());
        for (std::size_t lane = 0; lane < count_; ++lane) {
            write_(indices_[lane],
                   vec3(values_[lane], values_[lane + kernel_.lanes], values_[lane + 2 * kernel_.lanes]));
        }
        count_ = 0;
    }

private:
    void place(std::size_t lane, unsigned i) {
        const vec3 point = pointsOf(geometry_)[i];
        indices_[lane] = i;
        for (int axis = 0; axis < 3; ++axis) {
            values_[lane + static_cast<std::size_t>(axis) * kernel_.lanes] = point[axis];
        }
    }

    T& geometry_;
    const LatticeMap& map_;
    PointWriter<T> write_;
    const BlockKernel& kernel_ = blockKernel();
    std::size_t count_ = 0;
    std::array<unsigned, kMaxBlock> indices_{};
    std::array<float, 3 * kMaxBlock> values_{};
};

template <class T, class Selected>
T& deformSelected(T& geometry, const Lattice& lattice, const mat4& deformedLatticeMatrix, const mat4& baseLatticeMatrix,
                  bool local, unsigned influenceS, unsigned influenceT, unsigned influenceU, const Selected& selected) {
    requireConsistent(geometry, "geometry");
    const unsigned count = pointCount(geometry);
    if (count == 0) {
        return geometry;
    }
    const LatticeMap deformed =
        latticeMap(matrixOf(geometry), inverseMatrixOf(geometry), lattice, deformedLatticeMatrix, baseLatticeMatrix,
                   local, influenceS, influenceT, influenceU);
    PointWriter<T> write(geometry);
    if (deformed.isWhole() && !repeatsPoints(geometry)) {
        BlockedPoints<T> blocked(geometry, deformed);
        for (unsigned i = 0; i < count; ++i) {
            if (selected(i)) {
                blocked.add(i);
            }
        }
        blocked.flush();
        return geometry;
    }
    for (unsigned i = 0; i < count; ++i) {
        if (selected(i)) {
            write(i, deformed(pointsOf(geometry)[i]));
        }
    }
    return geometry;
}

} // namespace

template <class T>
T& ffd(T& geometry, Lattice const& lattice, mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix, bool local,
       unsigned int influenceS, unsigned int influenceT, unsigned int influenceU) {
    return deformSelected(geometry, lattice, deformedLatticeMatrix, baseLatticeMatrix, local, influenceS, influenceT,
                          influenceU, [](unsigned) { return true; });
}

template <class T>
T& ffdPartial(T& geometry, std::vector<unsigned int> indices, Lattice const& lattice, mat4 deformedLatticeMatrix,
              mat4 baseLatticeMatrix, bool local, unsigned int influenceS, unsigned int influenceT,
              unsigned int influenceU) {
    const std::vector<char> selected = selectionMask(indices, pointsOf(geometry).size());
    return deformSelected(geometry, lattice, deformedLatticeMatrix, baseLatticeMatrix, local, influenceS, influenceT,
                          influenceU, [&](unsigned i) { return selected[i] != 0; });
}

void pointFFD(std::function<vec3(vec3)>& made, mat4 const& objectToWorld, mat4 const& worldToObject,
              Lattice const& lattice, mat4 const& deformedLatticeMatrix, mat4 const& baseLatticeMatrix, bool local,
              unsigned int influenceS, unsigned int influenceT, unsigned int influenceU) {
    LatticeMap map = latticeMap(objectToWorld, worldToObject, lattice, deformedLatticeMatrix, baseLatticeMatrix, local,
                                influenceS, influenceT, influenceU);
    if (auto* const earlier = made.target<LatticeMap>()) {
        *earlier = map;
    } else {
        made = map;
    }
}

std::function<vec3(vec3)> pointFFD(mat4 const& objectToWorld, mat4 const& worldToObject, Lattice const& lattice,
                                   mat4 const& deformedLatticeMatrix, mat4 const& baseLatticeMatrix, bool local,
                                   unsigned int influenceS, unsigned int influenceT, unsigned int influenceU) {
    return latticeMap(objectToWorld, worldToObject, lattice, deformedLatticeMatrix, baseLatticeMatrix, local,
                      influenceS, influenceT, influenceU);
}

template Mesh& ffd(Mesh&, Lattice const&, mat4, mat4, bool, unsigned int, unsigned int, unsigned int);
template Surface& ffd(Surface&, Lattice const&, mat4, mat4, bool, unsigned int, unsigned int, unsigned int);
template Mesh& ffdPartial(Mesh&, std::vector<unsigned int>, Lattice const&, mat4, mat4, bool, unsigned int,
                          unsigned int, unsigned int);

Mesh& ffdMesh(Mesh& geometry, Lattice const& lattice, mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix, bool local,
              unsigned int influenceS, unsigned int influenceT, unsigned int influenceU) {
    return ffd(geometry, lattice, deformedLatticeMatrix, baseLatticeMatrix, local, influenceS, influenceT, influenceU);
}

Surface& ffdSurface(Surface& geometry, Lattice const& lattice, mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix,
                    bool local, unsigned int influenceS, unsigned int influenceT, unsigned int influenceU) {
    return ffd(geometry, lattice, deformedLatticeMatrix, baseLatticeMatrix, local, influenceS, influenceT, influenceU);
}

Mesh& ffdPartialMesh(Mesh& geometry, std::vector<unsigned int> indices, Lattice const& lattice,
                     mat4 deformedLatticeMatrix, mat4 baseLatticeMatrix, bool local, unsigned int influenceS,
                     unsigned int influenceT, unsigned int influenceU) {
    return ffdPartial(geometry, std::move(indices), lattice, deformedLatticeMatrix, baseLatticeMatrix, local,
                      influenceS, influenceT, influenceU);
}

unsigned int binomial(unsigned int n, unsigned int k) {
    requireIndex("binomial's n", 0, n, kMaxWindow, "the table");
    requireIndex("binomial's k", 0, k, kMaxWindow, "the table");
    return kBinomials[n][k];
}

float pown(float x, unsigned int n) {
    constexpr unsigned kStep = kMaxWindow - 1;
    const Powers powers = powersOf(x);
    float product = 1.0f;
    for (; n > kStep; n -= kStep) {
        product *= powers[kStep];
    }
    return product * powers[n];
}

} // namespace zent
