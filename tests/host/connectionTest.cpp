#include "host/openScene.h"
#include "zent/values/Port.h"
#include "zent/values/Select.h"

#include <nlohmann/json.hpp>

namespace zent::test {
namespace {

Element element(const std::string& plug) {
    return Element(json(plug));
}

class ConnectionTest : public OpenScene {};

TEST_F(ConnectionTest, APlugReadsAsItsSource) {
    open(R"({"nodes": {
        "a": {"x": 1, "t": [1, 2, 3], "m": {"multi": {"4": [5, 6]}}, "angle": {"angle": 0.5, "unit": "radians"},
              "text": "t", "matrix": {"matrixData": [1,0,0,0, 0,1,0,0, 0,0,1,0, 7,8,9,1]}, "pair": {"float2": [1, 2]}},
        "b": {"x": 0, "t": [0, 0, 0], "m": {"multi": {"4": [0, 0], "5": [7, 7]}}, "angle": {"angle": 90},
              "text": "", "matrix": {"matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]}, "pair": {"double2": [0, 0]}},
        "c": {"x": 0, "t": [0, 0, 0], "list": {"multi": {}}}},
      "connections": [["a.x", "b.x"], ["b.x", "c.x"], ["a.t", "b.t"], ["b.t.tY", "c.t.tX"], ["c.x", "c.list[8]"],
                      ["a.m", "b.m"], ["a.angle", "b.angle"], ["a.text", "b.text"], ["a.matrix", "b.matrix"],
                      ["a.pair", "b.pair"]]})");
    EXPECT_EQ(element("c.x").getFloat(), 1.0f); // over two connections
    EXPECT_EQ(element("c.list[8]").getFloat(), 1.0f);
    EXPECT_EQ(element("b.t").getVec3(), vec3(1, 2, 3)); // children through their parent's connection
    EXPECT_EQ(element("c.t").getVec3(), vec3(2, 0, 0)); // and over one more
    EXPECT_EQ(element("b.m[4]").getVec2(), vec2(5, 6));
    EXPECT_EQ(element("b.m[5]").getVec2(),
              vec2(0, 0)); // the source has no such element: what is told here is only its kind
    EXPECT_EQ(element("b.angle").getFloat(), 0.5f);
    EXPECT_STREQ(selectPlug("b.text").asString().asChar(), "t");
    EXPECT_EQ(vec3(element("b.matrix").getMat4()[3]), vec3(7, 8, 9));
    EXPECT_EQ(element("b.pair").getVec2(), vec2(1, 2));

    EXPECT_TRUE(selectPlug("b.t").isDestination());
    EXPECT_FALSE(selectPlug("b.t.tX").isDestination());
    EXPECT_FALSE(selectPlug("a.x").isDestination());
    EXPECT_STREQ(selectPlug("c.t.tX").source().name().asChar(), "b.t.tY");
    EXPECT_TRUE(selectPlug("a.x").source().isNull());
}

TEST_F(ConnectionTest, AShapeWithoutDataIsReadThroughItsSource) {
    const std::string curve = R"({"degree": 1, "form": "open", "knots": [0, 1], "points": [[1, 2, 3], [4, 5, 6]]})";
    open(R"({"nodes": {"|shape": {"out": {"curve": )" + curve + R"(}}, "through": {"in": {"curve": null}},
                       "own": {"in": {"curve": )" +
         curve + R"(}}, "loose": {"in": {"curve": null}, "v": 1},
                       "lattice": {"in": {"lattice": null}}},
             "connections": [["|shape.out", "through.in"], ["|shape.out", "own.in"]]})");
    EXPECT_TRUE(selectPlug("through.in").asMDataHandle().data().isNull());
    EXPECT_STREQ(element("through.in").getMayaShape().name().asChar(), "|shape.out");
    EXPECT_STREQ(element("own.in").getMayaShape().name().asChar(), "own.in");
    EXPECT_EQ(element("through.in").get<Curve>().cv.at(1), vec3(4, 5, 6));
    EXPECT_EQ(thrownText([] { element("loose.in").get<Curve>(); }), "plug loose.in is null");
    EXPECT_EQ(thrownText([] { element("loose.v").getMayaShape(); }), "plug loose.v is null");
    EXPECT_TRUE(element("lattice.in").get<Lattice>().points.empty()); // read from the plug itself, null or not
    namescope = "ns";                                                 // the text has the manifest's name
    open(R"({"nodes": {"ns:loose": {"in": {"curve": null}}}})");
    EXPECT_EQ(thrownText([] { element("loose.in").get<Curve>(); }), "plug loose.in is null");
    EXPECT_EQ(thrownText([] { element("loose.in").getDagPath(); }), "plug loose.in has no source");
}

TEST_F(ConnectionTest, ADagPathLeadsToTheSource) {
    open(R"({"nodes": {"|a|b|mesh": {"out": {"mesh": null}, "v": 0}, "f": {"in": {"mesh": null}, "v": 0},
                       "g": {"v": 0}},
             "connections": [["mesh.out", "f.in"], ["g.v", "f.v"]]})");
    EXPECT_STREQ(element("f.in").getDagPath().fullPathName().asChar(), "|a|b|mesh");
    EXPECT_EQ(thrownText([] { element("mesh.out").getDagPath(); }), "plug mesh.out has no source");
    EXPECT_EQ(thrownText([] { Element(json(3)).getDagPath(); }), "no attached dag");
    EXPECT_FALSE(element("f.v").getDagPath().isValid()); // the source stands outside the DAG
}

} // namespace
} // namespace zent::test
