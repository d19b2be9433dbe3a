// The operations of the API that tools walk over a scene with.
#include "host/openScene.h"
#include "zent/values/Select.h"

#include <maya/MAnimControl.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnComponentListData.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>

namespace zent::test {
namespace {

using Names = std::vector<std::string>;

class WalkTest : public OpenScene {};

MObject node(const char* name) {
    MSelectionList list;
    MGlobal::getSelectionListByName(name, list);
    MObject object;
    list.getDependNode(0, object);
    return object;
}

Names namesOf(const MPlugArray& plugs) {
    Names names;
    for (unsigned int i = 0; i < plugs.length(); ++i) {
        names.emplace_back(plugs[i].name().asChar());
    }
    return names;
}

std::vector<int> numbers(const MIntArray& array) {
    return maya::std(array);
}

TEST_F(WalkTest, NodesHaveTypesAndAPlaceInTheDag) {
    open(
        R"({"nodes": {"|a|x": {"type": "joint"}, "|b|x": {"type": {"text": "t"}}, "m": {"type": "ikHandle", ".type": 4},
                       "u": {}, "|c|only": {}, "|y|y|y": {}}, "selected": ["m", "a|x"]})");
    Names all;
    Names dag;
    for (MItDependencyNodes it; !it.isDone(); it.next()) {
        const MFnDependencyNode fn(it.thisNode());
        all.push_back(std::string(fn.name().asChar()) + " " + fn.typeName().asChar());
    }
    for (MItDependencyNodes it(MFn::kDagNode); !it.isDone(); it.next()) {
        dag.emplace_back(MFnDagNode(it.item()).partialPathName().asChar());
    }
    EXPECT_EQ(all, (Names{"a transform", "x joint", "b transform", "x unknownDag", "m ikHandle", "u unknown",
                          "c transform", "only unknownDag", "y transform", "y transform", "y unknownDag"}));
    EXPECT_EQ(dag, (Names{"a", "a|x", "b", "b|x", "c", "only", "|y", "|y|y", "y|y|y"}));
    EXPECT_STREQ(selectPlug("b|x.type").asString().asChar(), "t");
    EXPECT_EQ(selectPlug("m.type").asInt(), 4);

    MSelectionList selected;
    MGlobal::getActiveSelectionList(selected);
    ASSERT_EQ(selected.length(), 2U);
    MDagPath path;
    EXPECT_FALSE(selected.getDagPath(0, path));
    EXPECT_TRUE(selected.getDagPath(1, path));
    EXPECT_EQ(path.length(), 2U);
    EXPECT_FALSE(path.push(node("b|x")));
    EXPECT_FALSE(path.pop(3));
    EXPECT_TRUE(path.pop());
    EXPECT_STREQ(path.fullPathName().asChar(), "|a");
    EXPECT_EQ(path.childCount(), 1U);
    EXPECT_TRUE(path.push(path.child(0)));
    EXPECT_STREQ(path.fullPathName().asChar(), "|a|x");
    const MFnDagNode fn(node("a|x"));
    EXPECT_TRUE(fn.parent(0) == node("|a") && fn.childCount() == 0);
    EXPECT_TRUE(MFnDagNode(node("|a")).parent(0).isNull() && MFnDagNode(node("m")).parentCount() == 0);
}

TEST_F(WalkTest, ConnectionsAreFollowedBothWays) {
    open(R"({"nodes": {"a": {"x": 1}, "b": {"x": 1, "list": {"multi": {"5": 1, "2": 0}}},
                       "u": {"type": "unitConversion", "input": 0, "output": 0},
                       "v": {"type": "unitConversion", "input": 0, "output": 0},
                       "w": {"type": "unitConversion", "input": 0, "output": 0},
                       "h": {"joint": {"message": null}}},
             "connections": [["a.x", "u.input"], ["u.output", "v.input"], ["v.output", "b.list[7]"], ["a.x", "b.x"],
                             ["a.x", "w.input"], ["a.message", "h.joint"]]})");
    const MPlug x = selectPlug("a.x");
    MPlugArray plugs;
    EXPECT_TRUE(x.destinations(plugs)); // w leads no further, and is itself the end
    EXPECT_EQ(namesOf(plugs), (Names{"b.x", "w.input", "b.list[7]"}));
    EXPECT_TRUE(x.destinationsWithConversions(plugs));
    EXPECT_EQ(namesOf(plugs), (Names{"u.input", "b.x", "w.input"}));
    EXPECT_FALSE(x.connectedTo(plugs, true, false));
    EXPECT_TRUE(selectPlug("v.output").connectedTo(plugs, true, true));
    EXPECT_EQ(namesOf(plugs), (Names{"b.list[7]"}));
    EXPECT_STREQ(selectPlug("b.list[7]").source().name().asChar(), "a.x");
    EXPECT_STREQ(selectPlug("b.list[7]").sourceWithConversion().name().asChar(), "v.output");
    EXPECT_TRUE(selectPlug("h.joint").source().node() == node("a"));
    EXPECT_TRUE(selectPlug("a.message").isSource() && !selectPlug("a.message").isDestination());
    EXPECT_TRUE(MFnDependencyNode(node("a")).getConnections(plugs));
    EXPECT_EQ(namesOf(plugs), (Names{"a.x", "a.message"}));
    EXPECT_FALSE(MFnDependencyNode(node("a")).hasAttribute("y"));

    // An element that was only asked for is none of the multi's; one that a connection feeds is.
    const MPlug list = selectPlug("b.list");
    list.elementByLogicalIndex(3);
    MIntArray indices;
    EXPECT_EQ(list.getExistingArrayAttributeIndices(indices), 3U);
    EXPECT_EQ(numbers(indices), (std::vector<int>{2, 5, 7}));
    EXPECT_STREQ(list.elementByPhysicalIndex(1).name().asChar(), "b.list[5]");
    EXPECT_TRUE(list.elementByPhysicalIndex(3).isNull());
    EXPECT_TRUE(list.elementByPhysicalIndex(0).array() == list && list.array().isNull());
    EXPECT_STREQ(MFnAttribute(list.elementByPhysicalIndex(0).attribute()).name().asChar(), "list");

    open(R"({"nodes": {"u": {"type": "unitConversion", "input": 0, "output": 0},
                       "v": {"type": "unitConversion", "input": 0, "output": 0}},
             "connections": [["u.output", "v.input"], ["v.output", "u.input"]]})");
    selectPlug("u.input").source(); // a ring of conversions has an end
    EXPECT_FALSE(selectPlug("u.output").destinations(plugs));
}

TEST_F(WalkTest, ComponentsAndPointsAreRead) {
    open(R"({"nodes": {"n": {"c": {"components": ["vtx[7]", "e[1:3]", "cv[0:1][2:3]", "pt[*][*][*]", "f[*]"]},
                             "p": {"points": [[1, 2, 3], [4, 5, 6]]}, "none": {"components": null}}}})");
    const MFnComponentListData list(selectPlug("n.c").asMObject());
    ASSERT_EQ(list.length(), 5U);
    MIntArray u;
    MIntArray v;
    EXPECT_TRUE(MFnSingleIndexedComponent(list[0]).getElements(u));
    EXPECT_EQ(numbers(u), (std::vector<int>{7}));
    EXPECT_EQ(MFnComponent(list[1]).componentType(), MFn::kMeshEdgeComponent);
    EXPECT_EQ(MFnSingleIndexedComponent(list[1]).element(2), 3);
    EXPECT_FALSE(MFnSingleIndexedComponent(list[2]).getElements(u));
    EXPECT_TRUE(MFnDoubleIndexedComponent(list[2]).getElements(u, v));
    EXPECT_EQ(numbers(u), (std::vector<int>{0, 0, 1, 1}));
    EXPECT_EQ(numbers(v), (std::vector<int>{2, 3, 2, 3}));
    const MFnTripleIndexedComponent all(list[3]);
    EXPECT_TRUE(all.isComplete() && all.elementCount() == 0);
    EXPECT_TRUE(list[5].isNull() && selectPlug("n.none").asMObject().isNull());
    MPointArray points;
    EXPECT_TRUE(MFnPointArrayData(selectPlug("n.p").asMObject()).copyTo(points));
    EXPECT_EQ(maya::pointsToStd(points), (std::vector<vec3>{{1, 2, 3}, {4, 5, 6}}));
}

TEST_F(WalkTest, TimeRunsThroughTimeNodes) {
    open(R"({"nodes": {"time1": {"type": "time", "outTime": {"time": 2, "unit": "seconds"}}, "n": {"in": {"time": 0}}},
             "connections": [["time1.outTime", "n.in"]]})");
    EXPECT_EQ(MAnimControl::currentTime().as(MTime::kFilm), 48.0);
    MAnimControl::setCurrentTime(MTime(12.0, MTime::kFilm));
    EXPECT_EQ(selectPlug("n.in").asMTime().as(MTime::kFilm), 12.0);
    EXPECT_EQ(selectPlug("n.in").asMTime().unit(), MTime::kSeconds);
}

TEST_F(WalkTest, AttributesOfTheNodeComeBeforeThoseBelowACompound) {
    for (const char* filler : {"", R"("z": [[1, 1, 1, 1], [1, 1, 1, 1], [1, 1, 1, 1], [1, 1, 1, 1]], )"}) {
        open(std::string(R"({"nodes": {"n": {)") + filler + R"("c": {"compound": {"x": 1, "y": 2}}, "x": 3}}})");
        EXPECT_EQ(selectPlug("n.x").asInt(), 3);
        EXPECT_EQ(selectPlug("n.y").asInt(), 2);
    }
}

TEST_F(WalkTest, AMeshNumbersItsEdges) {
    open(R"({"nodes": {"|m": {"out": {"mesh": {"points": [[0,0,0], [1,0,0], [1,1,0], [0,1,0], [2,0,0]],
             "polygons": [[0, 1, 2, 3], [1, 4, 2]], "uvSets": {"a": {"uvs": [], "polygons": [[], []]}}}}}}})");
    const MFnMesh mesh(selectPlug("m.out").asMObject());
    ASSERT_EQ(mesh.numEdges(), 6);
    int2 edge = {};
    EXPECT_TRUE(mesh.getEdgeVertices(5, edge));
    EXPECT_TRUE(edge[0] == 4 && edge[1] == 2); // 2 to 1 is the first polygon's
    EXPECT_FALSE(mesh.getEdgeVertices(6, edge));
    MStringArray names;
    EXPECT_TRUE(mesh.getUVSetNames(names));
    EXPECT_EQ(names.length(), 1U);
}

} // namespace
} // namespace zent::test
