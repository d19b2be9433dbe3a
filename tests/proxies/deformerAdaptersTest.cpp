#include "proxies/adapters.h"

#include "nodes/shapesForDeformers.h"
#include "zent/proxies/PointWalk.h"
#include "zent/values/jsonAccess.h"

namespace zent::test {
namespace {

const std::string kUnit = "[1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]";
const std::string kLift = "[1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 5, 1]";  // by 5 along z
const std::string kTurn = "[0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]"; // x to y

/// Blocks in the order of their names; points stand at (1, 0, 0) and shapes at (0, 7, 0).
enum Block {
    kMesh,
    kMovedMesh,
    kCurve,
    kOpenCurve,
    kSurface,
    kLattice, // clang-format off
    kDeltas, kFactors, kWeights, kIndices, kUnsorted,
    kWire, kLiftedWire, kBindings, kOnePointLattice, kNoKnots, // clang-format on
};

void loadBlocks() {
    const mat4 up = translation(vec3(0, 7, 0));
    const vec3 x(1, 0, 0);
    const std::vector<vec3> three(3, x);
    Lattice lattice = latticeOf(3, 1, 1, three);
    lattice.translation = vec3(0, 7, 0);
    ResourceWriter writer;
    writer.add(meshOf(three, up));
    writer.add(meshOf(std::vector<vec3>(3, 3.0f * x), up));
    writer.add(curveOf(2, kFormPeriodic, std::vector<vec3>(5, x), up));
    writer.add(curveOf(2, kFormOpen, std::vector<vec3>(5, x), up));
    writer.add(surfaceOf(1, kFormPeriodic, 1, 3, three, up));
    writer.add(lattice);
    writer.add(DeltaList{{1u, vec3(9.0f)}, {0u, x}, {1u, 2.0f * x}}); // of point 1 the last one counts
    writer.add(WeightMap{{0u, 0.5f}});
    writer.add(SkinWeights{{0u, 1u, 0.5f}, {1u, 0u, 1.0f}, {0u, 0u, 1.0f}});
    writer.add(std::vector<unsigned>{0u, 2u});
    writer.add(std::vector<unsigned>{2u, 0u, 1u});
    writer.add(curveOf(1, kFormOpen, {vec3(0.0f), vec3(8, 0, 0)}));
    writer.add(curveOf(1, kFormOpen, {vec3(0, 0, 2), vec3(8, 0, 2)}));
    writer.add(WireBindings(3, {0.0f, 0.5f, mat3(1.0f)}));
    writer.add(latticeOf(1, 1, 1, {vec3(2, 3, 4)}));
    writer.add(Surface(3, 3, kFormOpen, kFormOpen, {}, {}, std::vector<vec3>(16, x), up));
    loadBlocksOf(writer);
}

std::string id(Block block) {
    return R"([{"id": )" + std::to_string(block) + "}]";
}

/// The node function's world positions over the whole walk; Maya's shape is the block `output`.
std::vector<vec3> walk(const std::string& method, Block output, const std::string& arguments) {
    loadBlocks();
    Proxy& proxy = adapter(method);
    const Arguments args = argumentsOf(json::parse("[" + arguments + "]"));
    std::vector<vec3> points;
    proxy.init(args, portsOf(json::parse("[" + id(output) + "]")));
    for (const auto whole = walkOf(proxy); !proxy.isDone(); proxy.next()) {
        EXPECT_EQ(proxy.index(), static_cast<int>(points.size()));
        points.push_back(toVec3(proxy.zentResult(args)[0]["value"]));
        EXPECT_EQ(whole->at(static_cast<unsigned>(proxy.index())).zent, points.back());
    }
    return points;
}

std::string item(const char* indices, Block block) {
    return std::string(R"([{"indices": )") + indices + R"(, "value": )" + id(block).substr(1, id(block).size() - 2) +
           "}]";
}

std::string both(const std::string& a, const std::string& b) {
    return a.substr(0, a.size() - 1) + ", " + b.substr(1);
}

std::string blendArguments(Block input, const std::string& shapes, const std::string& deltas,
                           const std::string& factors = "[]") {
    return "[1], " + id(input) + R"(, [{"indices": [2], "value": 1}], )" + shapes + ", " + deltas + ", " + factors;
}

std::string skinArguments(Block input, Block weights, const std::string& binds = kUnit + ", " + kUnit) {
    return "[1], " + id(input) + ", [" + kUnit + "], [" + kLift + ", " + kTurn + "], [" + binds + "], " + id(weights);
}

/// Half a weight for point 0, none for 2, the whole one for 1, which is on no list.
std::string clusterArguments(Block input, const std::string& indices) {
    return id(input) + ", " + indices + "[" + kLift + "], [" + kTurn + R"(], [0],
        [{"indices": [0], "value": 0.5}, {"indices": [2], "value": 0}], [[2, 0, 0]], [[0, 0, 2.0943951]], [0],
        [[3, 3, 3]], [[0, 1, 0]], [[0, 0, 0]], [[0, 4, 0]], [[0, 0, 6]])";
}

std::string ffdArguments(Block input, Block lattice, int influence) {
    return id(input) + ", " + id(lattice) + ", [" + kLift + "], [" + kUnit + "], [true], [" +
           std::to_string(influence) + "], [1], [1]";
}

std::string wireArguments(Block input) {
    return id(input) + ", [1], " + id(kWire) + ", " + id(kLiftedWire) + ", [0.5], [0.4], " + id(kBindings);
}

const std::string kSine = ", [0.5], [" + kTurn + "], [16], [2], [5], [-9], [9]";
const std::string kBend = ", [" + kUnit + "], [0.22439948], [-9], [9]"; // a right angle at a height of 7

TEST(DeformerAdapters, WalkOverPoints) {
    const vec3 rest(1, 7, 0);
    const vec3 x(1, 0, 0);
    const std::string deltas = item("[2, 6000]", kDeltas);
    const std::vector<vec3> blended{rest + x, rest + 2.0f * x, rest}; // of point 1 the last delta counts
    const std::vector<vec3> skinned{vec3(1, 7.5f, 5), vec3(1, 7, 5), vec3(0, 7, 0)};
    const float root = std::sqrt(0.75f);
    // Through the channels: (2, -1, 3) from the pivot (0, 1, 0), turned by 60 degrees, and half of (2, 4, 0) on top.
    const std::vector<vec3> clustered{vec3(2 + root, 9.5f + 2 * root, 3), vec3(0, 8, 5), rest};
    const std::vector<vec3> wired(3, vec3(1, 7 * std::cos(0.4f), 2 + 7 * std::sin(0.4f)));
    const float radius = static_cast<float>(14.0 / kPi);
    const vec3 bent(radius, radius - 1, 0);
    const struct {
        const char* method;
        Block shape;
        std::string arguments;
        std::vector<vec3> expected; // as many as the walk visits
    } rows[] = {
        {"blendShapeMesh", kMesh, blendArguments(kMesh, "[]", deltas), blended},
        {"blendShapeMesh",
         kMesh,
         blendArguments(kMesh, item("[2, 6000]", kMovedMesh), "[]", item("[2]", kFactors)),
         {rest + x, rest + 2.0f * x, rest + 2.0f * x}},
        {"blendShapeCurve", kCurve, blendArguments(kCurve, "[]", deltas), blended},
        {"blendShapeCurve",
         kOpenCurve,
         blendArguments(kCurve, "[]", deltas),
         {blended[0], blended[1], rest, rest, rest}}, // the overlap of the input has its records
        {"blendShapeSurface", kSurface, blendArguments(kSurface, "[]", deltas), blended},
        // A skinned mesh comes back without its matrix, and is compared so.
        {"skinMesh", kMesh, skinArguments(kMesh, kWeights), {vec3(1, 0.5f, 5), vec3(1, 0, 5), vec3(0.0f)}},
        {"skinCurve", kCurve, skinArguments(kCurve, kWeights), skinned},
        {"skinSurface", kSurface, skinArguments(kSurface, kWeights), skinned},
        // Knots that are missing speak for -2 by -2 points here, and no step reads them.
        {"skinSurface", kNoKnots, "[0]" + skinArguments(kNoKnots, kWeights).substr(3), std::vector<vec3>(4, rest)},
        {"skinSurface", kSurface, "[0]" + skinArguments(kNoKnots, kWeights).substr(3), std::vector<vec3>(3, rest)},
        // One block for two targets and, by two items each, for two points of a plug's width.
        {"blendShapeMesh",
         kMesh,
         R"([1], )" + id(kMesh) + R"(, [{"indices": [2], "value": 1}, {"indices": [3], "value": 2}], [], )" +
             both(item("[3, 6000]", kDeltas), item("[2, 6000]", kDeltas)) + ", []",
         {rest + 3.0f * x, rest + 6.0f * x, rest}},
        {"skinLattice", kLattice, skinArguments(kLattice, kWeights), skinned},
        {"clusterCurve", kCurve, clusterArguments(kCurve, id(kIndices) + ", "), clustered},
        {"clusterSurface", kSurface, clusterArguments(kSurface, id(kIndices) + ", "), clustered},
        {"clusterLattice", kLattice, clusterArguments(kLattice, id(kIndices) + ", "), clustered},
        {"clusterFullCurve", kCurve, clusterArguments(kCurve, ""), clustered},
        {"ffdMesh", kMesh, ffdArguments(kMesh, kOnePointLattice, 1), std::vector<vec3>(3, vec3(2, 3, 9))},
        {"ffdSurface", kSurface, ffdArguments(kSurface, kOnePointLattice, 1), std::vector<vec3>(3, vec3(2, 3, 9))},
        {"wireMesh", kMesh, wireArguments(kMesh), wired},
        {"wireCurve", kCurve, wireArguments(kCurve), wired},
        // The handle's Y is -x of the world: a height of -1, a phase of a quarter; its X is y.
        {"deformSineCurve", kCurve, id(kCurve) + kSine, std::vector<vec3>(3, vec3(1, 8, 0))},
        {"deformSineSurface", kSurface, id(kSurface) + kSine, std::vector<vec3>(3, vec3(1, 8, 0))},
        {"deformBendMesh", kMesh, id(kMesh) + ", [0.5]" + kBend, {bent, bent, bent}},
        {"deformBendPartialMesh", kMesh, id(kMesh) + ", [0.5], " + id(kIndices) + kBend, {bent, rest, bent}},
        // A binary search in 2, 0, 1 finds 1 alone.
        {"deformBendPartialMesh", kMesh, id(kMesh) + ", [0.5], " + id(kUnsorted) + kBend, {rest, bent, rest}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.method);
        expectNear(walk(row.method, row.shape, row.arguments), row.expected, 2e-5f);
    }
}

TEST(DeformerAdapters, EndWhereThePointsOfTheInputDo) {
    // No record for a periodic overlap: the walk over an open output ends at the first point beyond.
    for (const auto& [method, arguments] : {std::pair("skinCurve", skinArguments(kCurve, kWeights)),
                                            {"clusterCurve", clusterArguments(kCurve, id(kIndices) + ", ")},
                                            {"clusterFullCurve", clusterArguments(kCurve, "")}}) {
        EXPECT_THROW(walk(method, kOpenCurve, arguments), std::out_of_range) << method;
    }
}

// The whole walk, made at once, beside single points; and what it passes over beside each pair's own answer.
TEST(DeformerAdapters, SkinAllPointsToTheBitsOfEach) {
    constexpr unsigned kCount = 61;
    constexpr float kEpsilon = 12.0f;
    std::vector<vec3> points;
    SkinWeights weights;
    for (unsigned i = 0; i < kCount; ++i) {
        points.emplace_back(0.37f * static_cast<float>(i), 1.0f / static_cast<float>(i + 1), std::sin(0.5f + i));
        for (unsigned k = 0; k < (i < 40 ? 4 : i % 8); ++k) {
            weights.emplace_back(i, (i + k) % 2, 0.1f * static_cast<float>(1 + k + i % 5));
        }
    }
    std::get<2>(weights[21]) = std::numeric_limits<float>::quiet_NaN();
    std::get<2>(weights[33]) = std::numeric_limits<float>::infinity();
    std::swap(weights[3], weights[150]);
    ResourceWriter writer;
    writer.add(meshOf(points, translation(vec3(0, 7, 0))));
    writer.add(weights);
    writer.add(SkinWeights{{0u, 0u, 1.0f}, {kCount, 0u, 1.0f}});
    loadBlocksOf(writer);
    const auto argumentsWith = [](const char* envelope, const char* list) {
        return argumentsOf(json::parse(std::string("[[") + envelope + R"(], [{"id": 0}], [)" + kTurn + "], [" + kLift +
                                       ", " + kTurn + "], [" + kTurn + ", " + kUnit + "], [" + list + "]]"));
    };
    const std::vector<Port> ports = portsOf(json::parse(R"([[{"id": 0}]])"));
    Proxy& proxy = adapter("skinMesh");
    const Arguments args = argumentsWith("1", R"({"id": 1})");
    unsigned agreeing = 0;
    proxy.init(args, ports);
    for (const auto whole = walkOf(proxy); !proxy.isDone(); proxy.next()) {
        const auto i = static_cast<unsigned>(proxy.index());
        const PointPair pair = whole->at(i);
        const vec3 alone = toVec3(proxy.zentResult(args)[0]["value"]);
        for (int c = 0; c < 3; ++c) {
            EXPECT_TRUE(pair.zent[c] == alone[c] || (std::isnan(pair.zent[c]) && std::isnan(alone[c]))) << i;
        }
        agreeing += pair.agree(kEpsilon) ? 1u : 0u;
        EXPECT_EQ(whole->firstOff(i, kEpsilon) != i, pair.agree(kEpsilon)) << i;
    }
    EXPECT_GT(agreeing, 5u);
    EXPECT_LT(agreeing, kCount - 5u);
    for (const char* envelope : {"0", "1"}) {
        proxy.init(argumentsWith(envelope, R"({"id": 2})"), ports);
        try {
            walkOf(proxy);
            ADD_FAILURE() << envelope;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "weightList[1] is 61, inputGeometry has 61");
        }
    }
}

TEST(DeformerAdapters, Closures) {
    loadBlocks();
    const std::string head = R"("method": ")";
    const std::string outputs = R"("outputs": [{"name": "outputGeometry[0]", "type": "Vertex", "value": [1, 7, 0]}])";
    const std::string inputs = R"("inputs": [{"name": "envelope", "type": "Float", "value": 1},
        {"name": "input[0].inputGeometry", "type": "Vertex", "value": [1, 0, 0]}, )";
    const std::pair<std::array<std::string, 2>, std::string> rows[] = {
        {{"blendShapeMesh", blendArguments(kMesh, "[]", item("[2, 6000]", kDeltas))},
         R"("node": "blendShape", )" + inputs + R"({"name": "weight", "type": "FloatMap", "value": [[2, 1]]}])"},
        {{"skinMesh", skinArguments(kMesh, kWeights)},
         R"("node": "skinCluster", )" + inputs + R"({"name": "geomMatrix", "type": "Mat4", "value": )" + kUnit +
             R"(}, {"name": "matrix", "type": "Mat4List", "value": [)" + kTurn + ", " + kLift +
             R"(]}, {"name": "bindPreMatrix", "type": "Mat4List", "value": [)" + kUnit + ", " + kUnit +
             R"(]}, {"name": "weight", "type": "FloatList", "value": [0.5, 1]}])"},
    };
    for (const auto& [record, expected] : rows) {
        Proxy& proxy = adapter(record[0]);
        const Arguments args = argumentsOf(json::parse("[" + record[1] + "]"));
        const std::vector<Port> ports = portsOf(json::parse("[" + id(kMesh) + "]"));
        proxy.init(args, ports);
        EXPECT_EQ(proxy.closure(args, ports),
                  json::parse("{" + head + record[0] + "\", " + outputs + ", " + expected + "}"));
    }
}

} // namespace
} // namespace zent::test
