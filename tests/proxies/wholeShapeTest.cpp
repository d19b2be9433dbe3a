#include "proxies/adapters.h"

#include "nodes/shapesForDeformers.h"
#include "zent/nodes/blendShape.h"
#include "zent/nodes/cluster.h"
#include "zent/nodes/deformBend.h"
#include "zent/nodes/deformSine.h"
#include "zent/nodes/ffd.h"
#include "zent/nodes/skin.h"
#include "zent/nodes/wire.h"
#include "zent/proxies/PointWalk.h"

#include <cstring>

namespace zent::test {
namespace {

constexpr unsigned kCount = 9;

/// Points, matrices and weights with no round numbers among them.
std::vector<vec3> points(float seed) {
    std::vector<vec3> list;
    for (unsigned i = 0; i < kCount; ++i) {
        const float t = seed + static_cast<float>(i);
        list.emplace_back(std::sin(3.7f * t), std::sin(1.1f * t), std::sin(2.3f * t));
    }
    return list;
}

mat4 matrix(float seed) {
    mat4 m(1.0f);
    for (int i = 0; i < 12; ++i) {
        m[i / 3][i % 3] += 0.3f * std::sin(seed + 1.7f * static_cast<float>(i));
    }
    return m;
}

template <class T>
T shape(float seed);
template <>
Mesh shape(float seed) {
    return meshOf(points(seed), matrix(seed));
}
template <>
Curve shape(float seed) {
    return curveOf(2, kFormOpen, points(seed), matrix(seed));
}
template <>
Surface shape(float seed) {
    return surfaceOf(1, kFormOpen, 3, 3, points(seed), matrix(seed));
}
template <>
Lattice shape(float seed) {
    Lattice lattice = latticeOf(3, 3, 1, points(seed));
    const mat4 m = matrix(seed);
    lattice.matrixLinear = mat3(m);
    lattice.translation = vec3(m[3]);
    return lattice;
}

/// One record, by the adapter's walk and by the node function over the whole shape.
class WholeShapes : public testing::Test {
protected:
    template <class Record>
    std::string block(const Record& record) {
        return R"({"id": )" + std::to_string(writer_.add(record)) + "}";
    }
    static std::string text(const mat4& m) {
        json numbers = json::array();
        for (int i = 0; i < 16; ++i) {
            numbers.push_back(m[i / 4][i % 4]);
        }
        return numbers.dump();
    }

    template <class T>
    void expectEqual(const std::string& method, const T& input, const std::string& arguments, const T& whole) {
        SCOPED_TRACE(method);
        const std::string output = block(input);
        loadBlocksOf(writer_);
        Proxy& proxy = adapter(method);
        proxy.init(argumentsOf(json::parse("[" + arguments + "]")), portsOf(json::parse("[[" + output + "]]")));
        const auto walk = walkOf(proxy);
        ASSERT_EQ(walk->count(), kCount);
        bool moves = false;
        for (unsigned i = 0; i < kCount; ++i) {
            const vec3 expected = toWorld(whole, pointsOf(whole)[i]);
            const vec3 point = walk->zent(i);
            EXPECT_EQ(std::memcmp(&point, &expected, sizeof point), 0) << i;
            moves = moves || walk->at(i).distance() > 0.01f;
        }
        EXPECT_TRUE(moves);
    }

    template <class T>
    void blend(const char* method) {
        const T input = shape<T>(1);
        const T first = shape<T>(2);
        const T second = shape<T>(3);
        DeltaList deltas;
        WeightMap factors;
        for (unsigned i = 0; i < kCount; ++i) {
            deltas.emplace_back(i, points(4)[i]);
            factors[i] = 0.3f + 0.1f * static_cast<float>(i);
        }
        const TargetShapes<T> shapes{{{0, 6000}, first}, {{1, 5500}, second}, {{2, 6000}, second}};
        const auto item = [](const char* indices, const std::string& value) {
            return std::string(R"({"indices": )") + indices + R"(, "value": )" + value + "}";
        };
        const std::string secondBlock = block(second);
        expectEqual(method, input,
                    "[0.7], [" + block(input) + "], [" + item("[0]", "0.4") + ", " + item("[1]", "0.8") + ", " +
                        item("[2]", "0.9") + "], [" + item("[0, 6000]", block(first)) + ", " +
                        item("[1, 5500]", secondBlock) + ", " + item("[2, 6000]", secondBlock) + "], [" +
                        item("[1, 6000]", block(deltas)) + "], [" + item("[0]", block(factors)) + "]",
                    blendShape<T>(0.7f, input, {{0, 0.4f}, {1, 0.8f}, {2, 0.9f}}, shapes, {{{1, 6000}, deltas}},
                                  {{0, factors}}));
    }

    template <class T>
    void skinning(const char* method) {
        const T input = shape<T>(1);
        SkinWeights weights;
        for (unsigned i = 0; i < kCount; ++i) {
            weights.emplace_back(i, i % 2, 0.6f);
            weights.emplace_back(i, 1 - i % 2, 0.1f * static_cast<float>(i));
        }
        expectEqual(method, input,
                    "[0.5], [" + block(input) + "], [" + text(matrix(2)) + "], [" + text(matrix(3)) + ", " +
                        text(matrix(4)) + "], [" + text(matrix(5)) + ", " + text(matrix(6)) + "], [" + block(weights) +
                        "]",
                    skin<T>(0.5f, input, matrix(2), {matrix(3), matrix(4)}, {matrix(5), matrix(6)}, weights));
    }

    /// Of scale 1, which does not compound from point to point.
    template <class T>
    void cluster(const char* method, bool isFull) {
        const T input = shape<T>(1);
        const std::vector<unsigned> all{0, 1, 2, 3, 4, 5, 6, 7, 8};
        const WeightMap weights{{0, 0.5f}, {1, 0.3f}, {2, 0.0f}, {5, 0.9f}};
        const std::string handle = "[" + text(matrix(2)) + "], [" + text(matrix(3)) + R"(], [1],
            [{"indices": [0], "value": 0.5}, {"indices": [1], "value": 0.3}, {"indices": [2], "value": 0},
             {"indices": [5], "value": 0.9}],
            [[1.1, 2.2, 3.3]], [[0.4, 1.5, 0.6]], [2], [[1, 1, 1]], [[0.7, 0.8, 0.9]], [[1.3, 0.2, 0.1]],
            [[0.5, 0.6, 0.7]], [[0.8, 0.9, 0.3]])";
        T whole = input;
        _cluster<T>(whole, isFull ? boost::optional<std::vector<unsigned>>() : all, matrix(2), matrix(3), 1, weights,
                    vec3(1.1f, 2.2f, 3.3f), vec3(0.4f, 1.5f, 0.6f), 2, vec3(1.0f), vec3(0.7f, 0.8f, 0.9f),
                    vec3(1.3f, 0.2f, 0.1f), vec3(0.5f, 0.6f, 0.7f), vec3(0.8f, 0.9f, 0.3f));
        expectEqual(method, input, "[" + block(input) + "], " + (isFull ? "" : "[" + block(all) + "], ") + handle,
                    whole);
    }

    template <class T>
    void freeForm(const char* method) {
        const T input = shape<T>(1);
        const Lattice lattice = shape<Lattice>(7);
        T whole = input;
        ffd<T>(whole, lattice, matrix(2), matrix(3), true, 2, 2, 2);
        expectEqual(method, input,
                    "[" + block(input) + "], [" + block(lattice) + "], [" + text(matrix(2)) + "], [" + text(matrix(3)) +
                        "], [true], [2], [2], [2]",
                    whole);
    }

    template <class T>
    void wires(const char* method) {
        const T input = shape<T>(1);
        const Curve base = shape<Curve>(2);
        const Curve deformed = shape<Curve>(3);
        WireBindings bindings;
        for (unsigned i = 0; i < kCount; ++i) {
            bindings.emplace_back(0.0f, 0.7f * static_cast<float>(i), mat3(matrix(static_cast<float>(i))));
        }
        T whole = input;
        wire<T>(whole, 0.8f, base, deformed, {0.5f, 3.5f}, {0.3f, 0.9f}, bindings);
        expectEqual(method, input,
                    "[" + block(input) + "], [0.8], [" + block(base) + "], [" + block(deformed) +
                        "], [0.5, 3.5], [0.3, 0.9], [" + block(bindings) + "]",
                    whole);
    }

    template <class T>
    void sine(const char* method) {
        const T input = shape<T>(1);
        T whole = input;
        deformSine<T>(whole, 0.9f, matrix(2), 1.7f, 0.6f, 0.2f, -5.0f, 5.0f);
        expectEqual(method, input,
                    "[" + block(input) + "], [0.9], [" + text(matrix(2)) + "], [1.7], [0.6], [0.2], [-5], [5]", whole);
    }

    void bend(const char* method, bool isPartial) {
        const Mesh input = shape<Mesh>(1);
        const std::vector<unsigned> some{0, 2, 3, 7};
        Mesh whole = input;
        if (isPartial) {
            deformBendPartialMesh(whole, 0.9f, some, matrix(2), 1.2f, -0.8f, 0.7f);
        } else {
            deformBendMesh(whole, 0.9f, matrix(2), 1.2f, -0.8f, 0.7f);
        }
        expectEqual(method, input,
                    "[" + block(input) + "], [0.9], " + (isPartial ? "[" + block(some) + "], " : "") + "[" +
                        text(matrix(2)) + "], [1.2], [-0.8], [0.7]",
                    whole);
    }

private:
    ResourceWriter writer_;
};

TEST_F(WholeShapes, AreWalkedBitForBit) {
    blend<Mesh>("blendShapeMesh");
    blend<Curve>("blendShapeCurve");
    blend<Surface>("blendShapeSurface");
    skinning<Mesh>("skinMesh");
    skinning<Curve>("skinCurve");
    skinning<Surface>("skinSurface");
    skinning<Lattice>("skinLattice");
    cluster<Curve>("clusterCurve", false);
    cluster<Surface>("clusterSurface", false);
    cluster<Lattice>("clusterLattice", false);
    cluster<Curve>("clusterFullCurve", true);
    freeForm<Mesh>("ffdMesh");
    freeForm<Surface>("ffdSurface");
    wires<Mesh>("wireMesh");
    wires<Curve>("wireCurve");
    sine<Curve>("deformSineCurve");
    sine<Surface>("deformSineSurface");
    bend("deformBendMesh", false);
    bend("deformBendPartialMesh", true);
}

} // namespace
} // namespace zent::test
