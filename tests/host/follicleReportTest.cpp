#include "host/openScene.h"
#include "proxies/adapters.h"

namespace zent::test {
namespace {

/// Vertices 0 to 15 and faces 0 to 8 of a grid, moved up by 10. The set "seams" has UVs of its own for each corner of
/// each face, in descending order; "map1" has none.
json gridScene() {
    json points, polygons, uvs, uvPolygons;
    for (int v = 0; v < 16; ++v) {
        points.push_back({v % 4, v / 4, 0.5 * v});
    }
    for (int f = 0; f < 9; ++f) {
        const int v = f / 3 * 4 + f % 3;
        polygons.push_back({v, v + 1, v + 5, v + 4});
        uvPolygons.push_back({35 - 4 * f, 34 - 4 * f, 33 - 4 * f, 32 - 4 * f});
    }
    for (int uv = 0; uv < 36; ++uv) {
        uvs.push_back({uv, 0.25 * uv});
    }
    const json seams = {{"uvs", uvs}, {"polygons", uvPolygons}};
    const json mesh = {
        {"points", points},
        {"polygons", polygons},
        {"uvSets", {{"map1", {{"uvs", json::array()}, {"polygons", json(9, json::array())}}}, {"seams", seams}}},
        {"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 10, 1}}};
    return {{"nodes",
             {{"|grid|gridShape", {{"outMesh", {{"mesh", mesh}}}}},
              {"pin", {{"inputMesh", {{"mesh", nullptr}}}, {"mapSetName", "seams"}, {"outRotate", {0, 0, 0}}}}}},
            {"connections", json::array({json::array({"|grid|gridShape.outMesh", "pin.inputMesh"})})}};
}

class FollicleReport : public OpenScene {
protected:
    json closureOf(const json& mesh, const json& vertices) {
        return adapter("follicleRotateMesh")
            .closure(
                argumentsOf(json::array({json::array({mesh}), json::array({0.25}), json::array({0.75}), vertices})),
                portsOf(json::array({json::array({"pin.outRotate"})})));
    }
};

TEST_F(FollicleReport, FindsAMeshInAnElement) {
    json scene = gridScene();
    json& shape = scene["nodes"]["|grid|gridShape"];
    shape = {{"worldMesh", {{"multi", json::array({shape["outMesh"]})}}}};
    scene["connections"][0][0] = "|grid|gridShape.worldMesh[0]";
    open(scene.dump());
    EXPECT_EQ(closureOf("pin.inputMesh", {5, 0, 4, 1}).at("inputs").at(0).at("value").at("polyCounts").size(), 4U);
}

TEST_F(FollicleReport, RebuildsTheFacesAroundTheQuad) {
    open(gridScene().dump());
    const json report = closureOf("pin.inputMesh", {5, 0, 4, 1}); // face 0: touched by 0, 1, 3 and 4
    EXPECT_EQ(report.at("node"), "follicle");
    EXPECT_EQ(report.at("method"), "follicleRotateMesh");
    EXPECT_EQ(report.at("outputs").at(0).at("type"), "Euler");
    const json& inputs = report.at("inputs");
    EXPECT_EQ(inputs.at(1), (json{{"name", "parameterU"}, {"type", "Float"}, {"value", 0.25}}));
    EXPECT_EQ(inputs.at(2), (json{{"name", "parameterV"}, {"type", "Float"}, {"value", 0.75}}));
    EXPECT_EQ(inputs.at(0).at("name"), "inputMesh");
    EXPECT_EQ(inputs.at(0).at("type"), "Mesh");

    const json& mesh = inputs.at(0).at("value");
    EXPECT_EQ(mesh.at("polyCounts"), json({4, 4, 4, 4}));
    EXPECT_EQ(mesh.at("polyConnection"), json({0, 1, 2, 3, 1, 4, 5, 2, 3, 2, 6, 7, 2, 5, 8, 6})); // first come
    EXPECT_EQ(mesh.at("uvIds"), json({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
    const std::vector<int> vertices{0, 1, 5, 4, 2, 6, 9, 8, 10};
    ASSERT_EQ(mesh.at("points").size(), vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const int v = vertices[i];
        EXPECT_EQ(mesh.at("points").at(i), json({v % 4 * 1.0, v / 4 * 1.0, 0.5 * v + 10.0})) << v;
    }
    ASSERT_EQ(mesh.at("uvValues").size(), 16u);
    for (int i = 0; i < 16; ++i) {
        const int face = std::vector<int>{0, 1, 3, 4}[static_cast<std::size_t>(i / 4)];
        const int uv = 35 - 4 * face - i % 4;
        EXPECT_EQ(mesh.at("uvValues").at(static_cast<std::size_t>(i)), json({uv * 1.0, 0.25 * uv})) << i;
    }
}

TEST_F(FollicleReport, NamesWhatIsMissing) {
    open(gridScene().dump());
    EXPECT_EQ(thrownText([&] {
                  closureOf("pin.inputMesh", {0, 1, 5, 9});
              }),
              "no face with these vertices: [0, 1, 5, 9]");
    EXPECT_EQ(thrownText([&] { closureOf("pin.inputMesh", {0, 1, 5}); }), "no face with these vertices: [0, 1, 5]");
    EXPECT_EQ(thrownText([&] { closureOf({{"id", 0}}, {0, 1, 5, 4}); }), "no attached dag");
    json scene = gridScene();
    scene["nodes"]["pin"]["mapSetName"] = "map1"; // without UVs, all corners share one
    open(scene.dump());
    const json mesh = closureOf("pin.inputMesh", {5, 6, 10, 9}).at("inputs").at(0).at("value");
    EXPECT_EQ(mesh.at("polyCounts").size(), 9u);
    EXPECT_EQ(mesh.at("uvValues"), json::parse("[[0.0, 0.0]]"));
}

} // namespace
} // namespace zent::test
