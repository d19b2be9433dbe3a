#include "zent/rig/Rig.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using nlohmann::json;
using zent::mat4;
using zent::vec3;
using zent::rig::Rig;

std::string write(const std::string& name, const json& value) {
    const std::string path = testing::TempDir() + name;
    std::ofstream(path) << value;
    return path;
}

json record(const std::string& node, const std::string& method, const std::vector<std::string>& results,
            const std::vector<json>& arguments) {
    json made{{"node_name", node}, {"method", method}, {"results", json::array()}, {"arguments", json::array()}};
    for (const std::string& plug : results) {
        made["results"].push_back({{"attribute", 0}, {"name", plug}});
    }
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        made["arguments"].push_back({{"attribute", i}, {arguments[i].is_string() ? "name" : "value", arguments[i]}});
    }
    return made;
}

Rig rigOf(const json& manifest, const json& scene) {
    return Rig::load(write("manifest.json", manifest), "", write("scene.json", scene));
}

Rig arm() {
    const std::string folder = ZENT_EXAMPLES "/arm/";
    return Rig::load(folder + "manifest.json", folder + "resource.bin", folder + "scene.json");
}

float number(const Rig& rig, const std::string& plug) {
    return *rig.numbers(rig.output(plug));
}

bool tells(const Rig& rig, const std::string& text) {
    for (const std::string& note : rig.notes()) {
        if (note.find(text) != std::string::npos) {
            return true;
        }
    }
    return false;
}

using Links = std::vector<std::pair<std::string, std::string>>;

json sceneOf(const json& nodes, const Links& links) {
    return {{"nodes", nodes}, {"connections", links}};
}

const json kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// Ways from a sum of 3 and 4 to another sum's first term; its second one is 10.
struct Way {
    const char* name;
    json nodes;
    Links connections;
    const char* made; ///< the first sum's result
    const char* read; ///< the second one's first argument
    float expected;   ///< of the second sum after the first one's first term is 5
};

TEST(Rig, ReadsOverAllConnectionsThatMayaPropagates) {
    const json compound = {1, 2, 7};
    const std::vector<Way> ways{
        {"plug to plug",
         {{"a", {{"output", 7}}}, {"b", {{"input1", 7}}}},
         {{"a.output", "b.input1"}},
         "a.output",
         "b.input1",
         19},
        {"the result itself", {{"a", {{"output", 7}}}}, {}, "a.output", "a.output", 19},
        {"compound to compound",
         {{"a", {{"t", compound}}}, {"b", {{"t", compound}}}},
         {{"a.t", "b.t"}},
         "a.t.tZ",
         "b.t.tZ",
         19},
        {"over two compounds",
         {{"a", {{"t", compound}}}, {"m", {{"t", compound}}}, {"b", {{"input1", 7}}}},
         {{"a.t", "m.t"}, {"m.t.tZ", "b.input1"}},
         "a.t.tZ",
         "b.input1",
         19},
        {"an element of a connected multi",
         {{"a", {{"o", {{"multi", {{"3", 7}}}}}}}, {"b", {{"i", {{"multi", {{"3", 7}}}}}}}},
         {{"a.o", "b.i"}},
         "a.o[3]",
         "b.i[3]",
         19},
        {"a unit conversion",
         {{"a", {{"output", 7}}},
          {"c", {{"type", "unitConversion"}, {"input", 7}, {"output", 14}, {"conversionFactor", 2}}},
          {"b", {{"input1", 14}}}},
         {{"a.output", "c.input"}, {"c.output", "b.input1"}},
         "a.output",
         "b.input1",
         28},
    };
    for (const Way& way : ways) {
        SCOPED_TRACE(way.name);
        json nodes = way.nodes;
        nodes["ctrl"] = {{"x", 3}};
        nodes["end"] = {{"output", 17}};
        // The manifest has them the wrong way round.
        Rig rig = rigOf({record("second", "addDoubleLinear", {"end.output"}, {way.read, 10}),
                         record("first", "addDoubleLinear", {way.made}, {"ctrl.x", 4})},
                        sceneOf(nodes, way.connections));
        rig.set(rig.input("ctrl.x"), 5.0f);
        EXPECT_EQ(rig.evaluate(), 2u);
        EXPECT_EQ(number(rig, "end.output"), way.expected);
    }
}

TEST(Rig, ChildrenOfAVectorComeFromWhereEachComesFrom) {
    const json scene = sceneOf(json::parse(R"({"a": {"output": 7},
        "b": {"input1": [0, 7, 1], "input2": [2, 2, 2], "output": [0, 14, 2]}})"),
                               {{"a.output", "b.input1.input1Y"}});
    Rig rig = rigOf({record("a", "addDoubleLinear", {"a.output"}, {3, 4}),
                     record("b", "multiplyDivide3D", {"b.output"}, {"b.input1", "b.input2", 1})},
                    scene);
    rig.set(rig.input("b.input1"), vec3(5.0f, 6.0f, 9.0f)); // Y is not free: a's result counts
    EXPECT_EQ(rig.evaluate(), 1u);
    EXPECT_EQ(rig.vector(rig.output("b.output")), vec3(10.0f, 14.0f, 18.0f));
    rig.set(rig.input("b.input1.input1X"), 1.0f);
    rig.evaluate();
    EXPECT_EQ(number(rig, "b.output.outputX"), 2.0f);
}

/// A matrix attribute, or the multi of one, that moves by so much along X.
std::string moved(int x, bool isMulti = false) {
    const std::string matrix =
        R"({"matrix": [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, )" + std::to_string(x) + ", 0, 0, 1]}";
    return isMulti ? R"({"multi": [)" + matrix + "]}" : matrix;
}

TEST(Rig, MatricesComeDownTheDag) {
    const json manifest =
        json::array({record("end", "decomposeMatrixTranslate", {"end.outputTranslate"}, {"end.inputMatrix"})});
    // `up` is where the scene's matrix has it, or where its translate would put it.
    const auto sceneWith = [](int up) {
        return sceneOf(
            json::parse(R"({"|up": {"translate": [1, 0, 0], "matrix": )" + moved(up) + R"(, "worldMatrix": )" +
                        moved(up, true) + R"(}, "|up|low": {"translate": [2, 0, 0], "matrix": )" + moved(2) +
                        R"(, "parentMatrix": )" + moved(up, true) + R"(, "worldMatrix": )" + moved(up + 2, true) +
                        R"(}, "end": {"inputMatrix": )" + moved(up + 2) + R"(, "outputTranslate": [3, 0, 0]}})"),
            {{"|up|low.worldMatrix[0]", "end.inputMatrix"}});
    };
    Rig rig = rigOf(manifest, sceneWith(1));
    EXPECT_EQ(rig.records().size(), 5u); // a matrix and a world matrix of both
    rig.set(rig.input("up.translate"), vec3(10.0f, 5.0f, 0.0f));
    rig.evaluate();
    EXPECT_EQ(rig.vector(rig.output("end.outputTranslate")), vec3(12.0f, 5.0f, 0.0f));

    Rig wrong = rigOf(manifest, sceneWith(6));
    EXPECT_TRUE(tells(wrong, "up.matrix stays as the scene has it"));
    EXPECT_THROW(wrong.input("up.translate"), std::runtime_error);
    EXPECT_EQ(wrong.vector(wrong.output("end.outputTranslate")), vec3(8.0f, 0.0f, 0.0f));
}

TEST(Rig, EvaluatesOnlyWhatDependsOnAChange) {
    Rig rig = arm();
    EXPECT_EQ(rig.evaluate(), 0u);
    const zent::rig::PlugId hand = rig.input("handControl.rotate");
    rig.set(hand, vec3(0.3f, 0.2f, 0.1f));
    const std::size_t some = rig.evaluate();
    EXPECT_GT(some, 3u);
    EXPECT_LT(some, rig.records().size() / 2); // neither the arm's reach nor its poses turn with the hand
    rig.set(hand, vec3(0.3f, 0.2f, 0.1f));
    EXPECT_EQ(rig.evaluate(), 0u);
}

TEST(Rig, SkinFollowsAMovedRootAsARigidBody) {
    Rig rig = arm();
    const std::vector<vec3> before = rig.points(rig.output("armSkin.outputGeometry[0]"));
    const mat4 wrist = rig.matrix(rig.output("wrist.worldMatrix[0]"));
    const vec3 cord = rig.vector(rig.output("cordMiddle.position"));
    const float reach = number(rig, "reach.distance");
    const vec3 offset(10.0f, -4.0f, 2.5f);
    const zent::rig::PlugId root = rig.input("arm.translate");
    const std::vector<zent::rig::PlugInfo>& inputs = rig.inputs();
    ASSERT_EQ(inputs[root.index].size, 3u);
    mat4 local = rig.matrix(rig.output("arm.matrix"));
    rig.set(root, vec3(local[3]) + offset);
    rig.evaluate();
    const std::vector<vec3>& after = rig.points(rig.output("armSkin.outputGeometry[0]"));
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        ASSERT_LT(glm::distance(after[i], before[i] + offset), 1e-3f) << i;
    }
    EXPECT_LT(glm::distance(rig.vector(rig.output("cordMiddle.position")), cord + offset), 1e-3f);
    EXPECT_LT(glm::distance(vec3(rig.matrix(rig.output("wrist.worldMatrix[0]"))[3]), vec3(wrist[3]) + offset), 1e-3f);
    EXPECT_NEAR(number(rig, "reach.distance"), reach, 1e-4f);
}

TEST(Rig, TellsWhatIsWrongWithAGraph) {
    const json scene = sceneOf(json::parse(R"({"a": {"input1": 1, "input2": 2, "output": 3},
        "b": {"input1": 1, "input2": 2, "output": 3}, "v": {"output": [1, 2, 3]}, "m": {"output": {"multi": [0, 5]}},
        "w": {"type": "choice", "output": 4}})"),
                               {{"a.output", "b.input1"}, {"b.output", "a.input1"}, {"w.output", "b.input2"}});
    const json add = record("a", "addDoubleLinear", {"a.output"}, {"a.input1", "a.input2"});
    const json other = record("b", "addDoubleLinear", {"b.output"}, {"b.input1", "b.input2"});
    const Rig circle = rigOf({add, other}, scene);
    EXPECT_TRUE(tells(circle, "a cycle: b(addDoubleLinear), which is read by a(addDoubleLinear), reads a.output; it is "
                              "cut at b.input1, which stays as the scene has it"));
    EXPECT_EQ(number(circle, "b.output"), 3.0f + 4.0f); // its inputs' sources in the scene
    EXPECT_EQ(number(circle, "a.output"), 7.0f + 2.0f);
    EXPECT_TRUE(tells(circle, "w.output is taken from the scene: no method computes a node of type choice; "
                              "b(addDoubleLinear) reads it"));

    // No vector has a second entry, and no number is read of a whole vector.
    for (const std::string plug : {"m.output[1]", "v.output"}) {
        const json made = record("d", "decomposeMatrixTranslate", {"v.output", "m.output[1]"},
                                 {{2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 9, 9, 9, 1}});
        json sum = record("s", "addDoubleLinear", {"a.output"}, {plug, 2});
        const Rig rig = rigOf({made, sum}, scene);
        EXPECT_TRUE(tells(rig, plug + " brings nothing that fits " + plug + ", which stays as the scene has it"));
        EXPECT_EQ(number(rig, "a.output"), plug[0] == 'm' ? 7.0f : 2.0f);
    }

    Rig left =
        rigOf({record("x", "noMethod", {}, {}), record("a", "addDoubleLinear", {"a.output"}, {"gone.plug", 1}), other},
              scene);
    EXPECT_TRUE(tells(left, "x(noMethod) is left out: there is no such method"));
    EXPECT_TRUE(tells(left, "a(addDoubleLinear) is left out: Cannot find plug \"gone.plug\""));
    EXPECT_EQ(left.records().size(), 1u);
    EXPECT_THROW(left.set(left.input("w.output"), vec3(1.0f)), std::runtime_error);
    EXPECT_THROW(left.output("b.outptu"), std::runtime_error);
}

} // namespace
