// Points of a whole lattice, as many side by side as a register holds. Included once for each kind of register, with
//   ZENT_BLOCK         the namespace
//   ZENT_BLOCK_LANES   floats in a register
//   ZENT_BLOCK_TARGET  the attribute of functions that use it
// Each lane has the operations of a single point in their order, so that all kinds give the same bits.
namespace ZENT_BLOCK {

using Wide = LanesOf<ZENT_BLOCK_LANES>;

struct Point {
    Wide axis[3];
};

ZENT_BLOCK_TARGET inline void transform(const mat4& m, Point& point) {
    const Point from = point;
    for (int a = 0; a < 3; ++a) {
        point.axis[a] = (m[0][a] * from.axis[0] + m[1][a] * from.axis[1]) + (m[2][a] * from.axis[2] + m[3][a]);
    }
}

ZENT_BLOCK_TARGET inline void raise(const Wide& x, Wide* powers) {
    const Wide x2 = x * x;
    const Wide x4 = x2 * x2;
    const Wide x8 = x4 * x4;
    powers[0] = Wide{} + 1.0f;
    powers[1] = x;
    powers[2] = x2;
    powers[3] = x2 * x;
    powers[4] = x4;
    powers[5] = x4 * x;
    powers[6] = x4 * x2;
    powers[7] = x4 * x2 * x;
    powers[8] = x8;
    powers[9] = x8 * x;
    powers[10] = x8 * x2;
}

/// The Bernstein weights of N points.
template <unsigned N>
ZENT_BLOCK_TARGET void weigh(const Wide& v, Wide* weights) {
    Wide rising[kMaxWindow];
    Wide falling[kMaxWindow];
    raise(v, rising);
    raise(1.0f - v, falling);
    for (unsigned i = 0; i < N; ++i) {
        weights[i] = static_cast<float>(kBinomials[N - 1][i]) * rising[i] * falling[N - 1 - i];
    }
}

using Weigh = void (*)(const Wide&, Wide*);

template <std::size_t... N>
constexpr std::array<Weigh, kMaxWindow> weighers(std::index_sequence<N...>) {
    return {{&weigh<N + 1>...}};
}

constexpr std::array<Weigh, kMaxWindow> kWeighers = weighers(std::make_index_sequence<kMaxWindow>());

/// Deforms the points of `values`, all x first, then all y, then all z.
ZENT_BLOCK_TARGET inline void deform(const Lattice& lattice, const mat4& toLattice, const mat4& fromLattice,
                                     float* values) {
    Point point;
    for (std::size_t a = 0; a < 3; ++a) {
        std::memcpy(&point.axis[a], values + a * ZENT_BLOCK_LANES, sizeof(Wide));
    }
    transform(toLattice, point);
    Wide s[kMaxWindow];
    Wide t[kMaxWindow];
    Wide u[kMaxWindow];
    kWeighers[lattice.s - 1](point.axis[0] + 0.5f, s);
    kWeighers[lattice.t - 1](point.axis[1] + 0.5f, t);
    kWeighers[lattice.u - 1](point.axis[2] + 0.5f, u);

    Point sum{};
    for (std::size_t i = 0; i < lattice.s; ++i) {
        Point slab{};
        for (std::size_t k = 0; k < lattice.u; ++k) {
            Point layer{};
            const vec3* at = &lattice.points[i + k * lattice.t * lattice.s];
            for (std::size_t j = 0; j < lattice.t; ++j, at += lattice.s) {
                layer.axis[0] += t[j] * at->x;
                layer.axis[1] += t[j] * at->y;
                layer.axis[2] += t[j] * at->z;
            }
            for (int a = 0; a < 3; ++a) {
                slab.axis[a] += u[k] * layer.axis[a];
            }
        }
        for (int a = 0; a < 3; ++a) {
            sum.axis[a] += s[i] * slab.axis[a];
        }
    }
    transform(fromLattice, sum);
    for (std::size_t a = 0; a < 3; ++a) {
        std::memcpy(values + a * ZENT_BLOCK_LANES, &sum.axis[a], sizeof(Wide));
    }
}

} // namespace ZENT_BLOCK
