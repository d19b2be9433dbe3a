#include "maya/Scene.h"
#include "documentedErrors.h"
#include "host/openScene.h"
#include "scene/sceneFile.h"
#include "zent/values/Port.h"
#include "zent/values/ResourceWriter.h"

#include <maya/MPlug.h>

namespace zent::test {
namespace {

using scene::Scene;

class SceneTest : public OpenScene {};

TEST_F(SceneTest, FindsTheOneNodeOfAName) {
    Scene& scene = Scene::current();
    const std::vector<std::string> paths{"|a",         "|a|x",  "|a|b|x",   "|c|b|x", "|c|b|x|y", "|ns:a",
                                         "|ns:a|ns:x", "plain", "ns:plain", "x2",     "|d|b|z"};
    for (const std::string& path : paths) {
        scene.addNode(path);
    }
    const auto pathOf = [&](const std::string& name) {
        const scene::Node* node = scene.findNode(name);
        return node == nullptr ? std::string() : node->path();
    };
    const std::pair<const char*, const char*> cases[] = {
        {"|a|x", "|a|x"},
        {"a|x", "|a|x"},
        {"a|b|x", "|a|b|x"},
        {"|c|b|x", "|c|b|x"},
        {"c|b|x", "|c|b|x"},
        {"b|x", ""}, // under a and under c
        {"x", ""},
        {"|x", ""},
        {"y", "|c|b|x|y"},
        {"x|y", "|c|b|x|y"},
        {"|x|y", ""},
        {"|c|b|x|y", "|c|b|x|y"},
        {"||c|b|x|y", ""},
        {"a", "|a"},
        {"|a", "|a"},
        {"b", ""},
        {"d|b", "|d|b"}, // a parent that was made for its child
        {"ns:x", "|ns:a|ns:x"},
        {"ns:a|ns:x", "|ns:a|ns:x"},
        {"a|ns:x", ""},
        {"plain", "plain"},
        {":plain", "plain"},
        {"ns:plain", "ns:plain"},
        {"|plain", ""},
        {"a|plain", ""},
        {"", ""},
        {"|", ""},
    };
    for (const auto& [name, path] : cases) {
        EXPECT_EQ(pathOf(name), path) << name;
    }
    scene.addNode("|e|b|x");
    EXPECT_EQ(pathOf("e|b|x"), "|e|b|x"); // a node that came after the first look-ups
    EXPECT_EQ(pathOf("c|b|x"), "|c|b|x");
}

TEST_F(SceneTest, NamesPlugsAsTheyAreAskedFor) {
    open(R"({"nodes": {"|g|n": {"top": {"compound": {"list": {"multi": {"2": {"compound": {
        "child": {"number": 1, "short": "ch", "alias": "kid"}, "inner": {"multi": [1]}}}}}}}}}})");
    const MPlug list = MPlug(scene::Scene::current().findNode("n")->attribute("list"));
    const MPlug child = list.elementByLogicalIndex(2).child(0);
    EXPECT_STREQ(child.name().asChar(), "|g|n.top.list[2].child");
    EXPECT_STREQ(child.partialName(false, true, true, false, false, true).asChar(), "list[2].child");
    EXPECT_STREQ(child.partialName(true, true, true, true, true, true).asChar(), "n.top.list[2].kid");
    EXPECT_STREQ(child.partialName().asChar(), "list[2].ch");
    EXPECT_STREQ(list.partialName().asChar(), "list");
    EXPECT_STREQ(list.elementByLogicalIndex(2).child(1).partialName().asChar(), "list[2].inner");
    EXPECT_EQ(list.numElements(), 1U);
    EXPECT_EQ(list.elementByLogicalIndex(2).logicalIndex(), 2U);
    EXPECT_TRUE(list.isArray() && !list.isCompound() && child.isChild() && list.elementByLogicalIndex(2).isElement());
    EXPECT_TRUE(child.child(0).isNull());
    EXPECT_TRUE(MPlug().elementByLogicalIndex(0).isNull());
}

TEST_F(SceneTest, TellsWhichNodeAndAttributeIsAtFault) {
    const auto attribute = [](const std::string& value) { return R"({"nodes": {"|a|n": {"v": )" + value + "}}}"; };
    const auto connected = [](const std::string& connections) {
        return R"({"nodes": {"n": {"v": 0, "w": 0, "t": [0, 0], "u": [0, 0], "text": "", "pair": [0, {"angle": 0}]}},
                   "connections": )" +
               connections + "}";
    };
    std::string deep;
    for (int level = 0; level <= 1000; ++level) {
        deep += "|a";
    }
    const std::string curve = R"({"curve": {"degree": 1, "form": "open", "knots": [0, 1], "points": )";
    const std::string mesh = R"({"mesh": {"points": [[0, 0, 0], [1, 0, 0], [0, 1, 0]], )";
    const std::pair<std::string, const char*> cases[] = {
        {"[1,", "parse error at line 1, column 4"},
        {"[]", "should be an object"},
        {R"({"node": {}})", "\"node\""},
        {R"({"nodes": [{"n": {"v": 1}}]})", "\"nodes\" should be an object"},
        {R"({"nodes": {"n": {}, "n": {}}})", "there are two nodes n"},
        {R"({"nodes": {"a|b": {}}})", "\"a|b\" is neither a node's name nor a full path"},
        {"{\"nodes\": {\"" + deep + "\": {}}}", "a node lies more than 1000 levels deep: |a|a"},
        {R"({"nodes": {"|a||b": {}}})", "\"|a||b\" is neither"},
        {R"({"nodes": {"m": {"v": 1}, "n": [{"v": 1}]}})", "n: should be an object of attributes"},
        {R"({"nodes": {"n": {"v": 1, "w": 1, "v": 2}}})", "n: there are two \"v\""},
        {R"({"nodes": {"n": {"type": 1, ".type": 2}}})", "n: there are two \"type\""},
        {R"({"nodes": {"n": {"c": {"compound": {".type": 2}}}}})", "n.c: \".type\" is no attribute's name"},
        {R"({"nodes": {"n": {"v.w": 1}}})", "n: \"v.w\" is no attribute's name"},
        {R"({"nodes": {"n": 3}})", "n: should be an object of attributes"},
        {"{\"nodes\": {\"n\": {\"" + std::string(300, 'v') + "\": 1}}}", "n: an attribute's name has 300 characters"},
        {R"({"resource": "../r.bin", "nodes": {}})", "\"resource\" should be the name of a file beside the scene"},
        {R"({"nodes": {}, "resource": "r.bin"})", "and stand before \"nodes\""},
        {R"({"resource": 3})", "\"resource\" should be the name"},
        {attribute("null"), "|a|n.v: should be"},
        {attribute("[1]"), "|a|n.v: a list of 1 is no compound"},
        {attribute("{}"), "|a|n.v: has none of the keys"},
        {attribute(std::string(100000, '[')), "|a|n: values nest more than 1000 levels deep"},
        {attribute(R"({"angle": 1, "time": 1})"), "|a|n.v: is both \"angle\" and \"time\""},
        {attribute(R"([0, {"angle": "x"}])"), "|a|n.v.vY: \"angle\" should be a number, not string"},
        {attribute(R"({"angle": 1, "unit": "film"})"), "|a|n.v: \"unit\" should be one of"},
        {attribute(R"({"angle": 1, "unit": ""})"), "|a|n.v: \"unit\" should be one of radians, "},
        {attribute(R"({"number": 1, "unit": "film"})"), "|a|n.v: only an angle or a time has a \"unit\""},
        {attribute(R"({"angle": 1, "type": 567})"), "|a|n.v: \"angle\" has no attribute type 567"},
        {attribute(R"({"angle": 1, "units": ""})"), "|a|n.v: \"angle\" has no \"units\""},
        {attribute(R"({"compound": {"x": 1, "x": 2}})"), "|a|n.v: there are two \"x\""},
        {attribute(R"({"multi": {"0": 1, "x": 2}})"), "|a|n.v: \"x\" is no logical index"},
        {attribute(R"({"multi": {"5": 1, "5": 2}})"), "|a|n.v: there are two elements 5"},
        {attribute(R"({"multi": {"5": {"compound": {"w": [1, null]}}}})"), "|a|n.v[5].w.wY: should be"},
        {attribute(R"({"multi": [1, "text"]})"), "|a|n.v[1]: is of another kind than |a|n.v[0]"},
        {attribute(R"({"float3": [1, 2]})"), "|a|n.v: \"value\" should be a list of 3, not of 2"},
        {attribute(R"({"matrix": [1]})"), "|a|n.v: \"matrix\" should be a list of 16"},
        {attribute(R"({"mesh": 3})"), "|a|n.v: \"geometry\" should be an object"},
        {attribute(R"({"mesh": {"id": 0}})"), "|a|n.v: lies in a resource file, and none was given"},
        {attribute(R"({"mesh": {"id": -1}})"), "|a|n.v: \"id\" should be a whole number"},
        {attribute(mesh + R"("polygons": [[0, 1, 3]]}})"), "|a|n.v: \"polygons\"[0] holds 3"},
        {attribute(mesh + R"("polygons": [[0, 1, 2]], "uvSets": {"m": {"uvs": [[0, 0]], "polygons": []}}}})"),
         "|a|n.v: UV set \"m\" has 0 polygons, the mesh has 1"},
        {attribute(mesh + R"("polygons": [[0, 1, 2]], "uvSets": {"m": {"uvs": [[0, 0]], "polygons": [[0]]}}}})"),
         "|a|n.v: polygon 0 of UV set \"m\" has 1 entries, its vertices are 3"},
        {attribute(mesh + R"("knots": []}})"), "|a|n.v: the geometry has no use for \"knots\""},
        {attribute(curve + "[[0, 0]]}}"), "|a|n.v: \"points\" should be a list of 3"},
        {attribute(curve + "[[0, 0, 0]]}}"), "|a|n.v: \"points\" has 1 entries, the degree and the knots need 2"},
        {attribute(R"({"curve": {"degree": 3, "form": "open", "knots": [0, 1], "points": []}})"),
         "|a|n.v: \"knots\" has 2 entries, degree 3 needs 6 or more"},
        {attribute(R"({"curve": {"degree": 0}})"), "|a|n.v: \"degree\" should be at least 1"},
        {attribute(R"({"curve": {"degree": 1, "knots": [0, 1]}})"), "|a|n.v: the geometry has no \"form\""},
        {attribute(R"({"lattice": {"divisions": [2, 1, 1], "points": []}})"), "the divisions need 2"},
        {attribute(R"({"curve": {"degree": 1, "form": "open", "degree": 2}})"),
         "|a|n.v: the geometry has two \"degree\""},
        {attribute(R"({"message": 1})"), "|a|n.v: \"message\" should be null"},
        {attribute(R"({"points": [[1, 2]]})"), "|a|n.v: \"points\" should be a list of 3, not of 2"},
        {attribute(R"({"components": ["vtx[0:7]x"]})"), "|a|n.v: \"vtx[0:7]x\" names no components"},
        {attribute(R"({"components": ["vtx[0][1]"]})"), "|a|n.v: \"vtx[0][1]\" names no components"},
        {attribute(R"({"components": ["cv[*][1]"]})"), "|a|n.v: \"cv[*][1]\" names no components"},
        {attribute(R"({"components": ["vtx[3:1]"]})"), "|a|n.v: \"vtx[3:1]\" names no components"},
        {attribute(R"({"components": ["cv[0:65535][0:65535]"]})"), "stands for more than 16777216 components"},
        {R"({"nodes": {}, "time": "now"})", "\"time\" should be a number, or a time with its unit"},
        {R"({"nodes": {}, "selected": ["n"]})", "\"selected\" should be a list of nodes' names"},
        {connected(R"([["n.v"]])"), "connection 0: should be"},
        {connected(R"([["n.v", "n.w"], ["n.x", "n.v"]])"), "connection 1: there is no plug \"n.x\""},
        {connected(R"([["m.v", "n.w"]])"), "connection 0: there is no one node \"m\""},
        {connected(R"([["n.v[0]", "n.w"]])"), "connection 0: there is no plug \"n.v[0]\""},
        {connected(R"([["n.v", "n.w"], ["n.t.tX", "n.w"]])"), "plug n.w has two sources: n.v and n.t.tX"},
        {connected(R"([["n.text", "n.w"]])"), "plug n.text cannot feed n.w: they are of different kinds"},
        {connected(R"([["n.t", "n.pair"]])"), "plug n.t cannot feed n.pair"},
        {connected(R"([["n.v", "n.w"], ["n.w", "n.v"]])"), "feeds itself over its connections"},
        {connected(R"([["n.t", "n.u"], ["n.u.uX", "n.v"], ["n.v", "n.t.tX"]])"), "feeds itself"},
    };
    std::vector<std::string> told;
    for (const auto& [text, reason] : cases) {
        told.push_back(whyNot(text));
        EXPECT_NE(told.back().find(reason), std::string::npos) << text << "\n  " << told.back();
        EXPECT_EQ(told.back().rfind("scene " + temporaryPath("scene.json") + ": ", 0), 0U) << told.back();
    }
    EXPECT_EQ(whyNot(connected(R"([["n.v", "n.w"], ["n.w", "n.t.tX"], ["n.v", "n.t.tY"]])")), "");

    const std::string resource = temporaryPath("quad.bin");
    ResourceWriter writer;
    writer.add(Mesh(4));
    writer.write(resource);
    told.push_back(thrownText([&] { open(attribute(R"({"mesh": {"id": 9}})"), resource); }));
    told.push_back(thrownText(
        [&] { open(R"({"nodes": {"n": {"m": {"mesh": {"id": 0}}, "c": {"curve": {"id": 0}}}}})", resource); }));
    for (const std::string& file : {std::string("/no/such/file"), temporaryPath("scene.json")}) {
        told.push_back(thrownText([&] { open(attribute(R"({"mesh": {"id": 0}})"), file); }));
    }
    told.push_back(thrownText([] { scene::readSceneFile("/no/such/file", "", scene::Scene::current()); }));
    open(R"({"nodes": {"n": {"m": {"mesh": null}}}})");
    told.push_back(thrownText([] { Element(json("n.x")).getFloat(); }));
    told.push_back(thrownText([] { Element(json("n.m")).get<Mesh>(); }));
    told.push_back(thrownText([] { Element(json("n.m")).getDagPath(); }));
    told.push_back(thrownText([] { Element(json(3)).getDagPath(); }));
    expectTold(documentedQuotes(std::string(ZENT_SOURCE_DIR) + "/docs/errors.md", {"The scene and its plugs"}), told,
               {// of a mesh's topology, in another test
                R"("topology" has 5 numbers, its counts ask for more)",
                R"("topology" ends after 0 numbers, its counts ask for more)",
                R"("topology" holds 3, which is no index below 3)",
                "polygon 0 of a UV set has 2 entries, its vertices are 3", "no face with these vertices: [4, 5, 6, 7]",
                "Empty Maya Shape", // of records
                "arm.w: there are more than 1048576 plugs of elements that the scene does not list"});
}

} // namespace
} // namespace zent::test
