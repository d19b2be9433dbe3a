#include "proxies/adapters.h"

#include "zent/values/geometryJson.h"

namespace zent::test {
namespace {

/// Block 0: a line from (0, 0, 0) to (4, 0, 0) over 2 to 6, moved by (0, 7, 0). Block 1: the same with its end at (4,
/// 9, 0). Block 2: (u, v, u * v) over (0, 1) and (0, 2), moved by (0, 0, 1). Block 3: the same, moved by (0, 0, 5).
void loadBlocks() {
    mat4 up(1.0f), near(1.0f), far(1.0f);
    up[3][1] = 7.0f;
    near[3][2] = 1.0f;
    far[3][2] = 5.0f;
    const std::vector<vec3> saddle{{0, 0, 0}, {0, 2, 0}, {1, 0, 0}, {1, 2, 2}};
    ResourceWriter writer;
    writer.add(Curve(1, kFormOpen, {{0, 0, 0}, {4, 0, 0}}, {2, 6}, up));
    writer.add(Curve(1, kFormOpen, {{0, 0, 0}, {4, 9, 0}}, {2, 6}, up));
    writer.add(Surface(1, 1, kFormOpen, kFormOpen, {0, 1}, {0, 2}, saddle, near));
    writer.add(Surface(1, 1, kFormOpen, kFormOpen, {0, 1}, {0, 2}, saddle, far));
    loadBlocksOf(writer);
}

TEST(GeometryAdapters, BindTheirNodes) {
    loadBlocks();
    const struct {
        const char* method;
        const char* arguments; // a list of ports
        const char* plug;      // the name of Maya's output
        const char* type;
        const char* value;
    } rows[] = {
        {"curveInfo", R"([[{"id": 0}]])", "arcLength", "Float", "4"},
        {"curve_from_cv", R"([[{"id": 0}], [{"indices": [1], "value": [4, 9, 0]}]])", "local", "Curve", R"({"id": 1})"},
        {"pointOnCurveInfo", R"([[{"id": 0}], [3], [false]])", "position", "Vec3", "[1, 7, 0]"},
        {"pointOnCurveInfo", R"([[{"id": 0}], [0.5], [true]])", "position", "Vec3", "[1, 7, 0]"},
        {"pointOnSurfacePosition", R"([[{"id": 2}], [0.5], [1], [false]])", "position", "Vec3", "[0.5, 1, 1.5]"},
        {"pointOnSurfacePosition", R"([[{"id": 2}], [0.5], [0.25], [true]])", "position", "Vec3", "[0.5, 0.5, 1.25]"},
        {"pointOnSurfaceTangentU", R"([[{"id": 2}], [0.5], [1], [false]])", "tangentU", "Vec3", "[1, 0, 1]"},
        {"pointOnSurfaceTangentV", R"([[{"id": 2}], [0.5], [1], [false]])", "tangentV", "Vec3", "[0, 1, 0.5]"},
        {"pointOnSurfaceNormal", R"([[{"id": 2}], [0.5], [1], [false]])", "normal", "Vec3",
         "[-0.666667, -0.333333, 0.666667]"},
        {"pointOnSurfaceNormalizedNormal", R"([[{"id": 2}], [0.5], [1], [false]])", "normalizedNormal", "Vec3",
         "[-0.666667, -0.333333, 0.666667]"},
        {"worldSurface", R"([[{"id": 2}], [[1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 5, 1]]])", "worldSpace[0]",
         "Surface", R"({"id": 3})"},
    };
    for (const auto& row : rows) {
        expectBinding(row.method, {row.plug}, row.type, json::array({json::array({json::parse(row.value)})}),
                      json::parse(row.arguments), 5e-6f);
    }
    // A record is the caller's own copy.
    Element(json{{"id", 0}}).get<Curve>().cv.clear();
    EXPECT_EQ(Element(json{{"id", 0}}).get<Curve>().cv.size(), 2u);
    // Its JSON form is a result, not an input.
    EXPECT_THROW(Element(json(Curve(vec3(0.0f), mat4(1.0f)))).get<Curve>(), json::out_of_range);
}

} // namespace
} // namespace zent::test
