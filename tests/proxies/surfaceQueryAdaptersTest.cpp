#include "proxies/adapters.h"

#include "zent/values/geometryJson.h"

namespace zent::test {
namespace {

/// Block 0: (u, v, 0) over (0, 1) and (0, 2). 1: its curve at u = 0.25. 2: a mesh, the unit square. 3 and 4: vertices
/// 3, 2 and 3, 2, 0, 3. 5 and 6: the polylines through them.
void loadBlocks() {
    const std::vector<vec3> square{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    ResourceWriter writer;
    writer.add(
        Surface(1, 1, kFormOpen, kFormOpen, {0, 1}, {0, 2}, {{0, 0, 0}, {0, 2, 0}, {1, 0, 0}, {1, 2, 0}}, mat4(1)));
    writer.add(Curve(1, kFormOpen, {{0.25f, 0, 0}, {0.25f, 2, 0}}, {0, 2}, mat4(1)));
    writer.add(Mesh(std::vector<vec3>(square), mat4(1)));
    writer.add(std::vector<unsigned int>{3, 2});
    writer.add(std::vector<unsigned int>{3, 2, 0, 3});
    writer.add(Curve(1, kFormOpen, {square[3], square[2]}, {0, 1}, mat4(1)));
    writer.add(Curve(1, kFormPeriodic, {square[3], square[2], square[0], square[3]}, {0, 1, 2, 3}, mat4(1)));
    loadBlocksOf(writer);
}

TEST(SurfaceQueryAdapters, BindTheirNodes) {
    loadBlocks();
    const struct {
        const char* method;
        const char* arguments; // a list of ports
        std::vector<std::string> plugs;
        const char* type;
        const char* values; // a list of outputs
    } rows[] = {
        {"closestPointOnSurface",
         R"([[{"id": 0}], [[0.5, 1.5, 3]]])",
         {"parameterU", "parameterV"},
         "Float",
         "[0.5, 1.5]"},
        {"curveFromSurfaceIso",
         R"([[{"id": 0}], [1], [0.9], [0.1], [0.25], [true]])",
         {"outputCurve"},
         "Curve",
         R"([{"id": 1}])"},
        {"polyEdgeToCurve", R"([[{"id": 2}], [{"id": 3}], [1]])", {"outputcurve"}, "Curve", R"([{"id": 5}])"},
        {"curveFromMeshEdge", R"([[{"id": 2}], [{"id": 4}]])", {"outputCurve"}, "Curve", R"([{"id": 6}])"},
        {"follicleTranslateMesh",
         R"([[{"id": 2}], [0.5], [0.25], [0, 1, 2, 3], [[0, 0], [1, 0], [1, 1], [0, 1]]])",
         {"outTranslate"},
         "Vec3",
         "[[0.5, 0.25, 0]]"},
        {"follicleTranslateSurface", R"([[{"id": 0}], [0.5], [0.25]])", {"outTranslate"}, "Vec3", "[[0.5, 0.5, 0]]"},
        {"follicleRotateMesh",
         R"([[{"id": 2}], [0.5], [0.25], [0, 1, 2, 3], [[0, 0], [1, 0], [1, 1], [0, 1]], [1, 1, 1, 1], [0, 0, 0, 0],
             [3, 1, 0, 2, 1, 3, 2, 0], [4], [0, 1, 2, 3]])",
         {"outRotate"},
         "Euler",
         "[[0, 0, 3.14159265]]"},
        {"follicleRotateSurface", R"([[{"id": 0}], [0.5], [0.25]])", {"outRotate"}, "Euler", "[[0, 0, 0]]"},
    };
    for (const auto& row : rows) {
        json ports;
        for (const json& value : json::parse(row.values)) {
            ports.push_back(json::array({value}));
        }
        expectBinding(row.method, row.plugs, row.type, ports, json::parse(row.arguments), 1e-4f);
    }
}

TEST(SurfaceQueryAdapters, ReportTheirInputs) {
    loadBlocks();
    const json surface = Element(json{{"id", 0}}).get<Surface>();
    const auto check = [&](const char* method, const char* arguments, const char* ports, const json& inputs) {
        const json report = adapter(method).closure(argumentsOf(json::parse(arguments)), portsOf(json::parse(ports)));
        EXPECT_EQ(report.at("node"), method);
        EXPECT_EQ(report.at("inputs"), inputs);
        EXPECT_TRUE(report.contains("outputs"));
    };
    const auto input = [](const char* name, const char* type, const json& value) {
        return json{{"name", name}, {"type", type}, {"value", value}};
    };
    check("closestPointOnSurface", R"([[{"id": 0}], [[0.5, 1.5, 3]]])", "[[0], [0]]",
          {input("inputSurface", "Surface", surface), input("inPosition", "Vec3", {0.5, 1.5, 3.0})});
    check("curveFromSurfaceIso", R"([[{"id": 0}], [1], [0.5], [0.125], [0.25], [true]])", R"([[{"id": 1}]])",
          {input("inputSurface", "Surface", surface), input("isoparmDirection", "Int", 1),
           input("isoparmValue", "Float", 0.5), input("minValue", "Float", 0.125), input("maxValue", "Float", 0.25),
           input("relativeValue", "Bool", true)});
}

} // namespace
} // namespace zent::test
