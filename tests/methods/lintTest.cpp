#include "zent/methods/Lint.h"

#include "documentedErrors.h"
#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/values/ResourceWriter.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zent {
namespace {

std::string inWords(const std::vector<Mistake>& mistakes) {
    std::string words;
    for (const Mistake& mistake : mistakes) {
        words += mistake.inWords() + "\n";
    }
    return words;
}

json record(const char* method, const char* results, const char* arguments) {
    return json::parse(std::string(R"([{"node_name": "n", "method": ")") + method + R"(", "results": )" + results +
                       R"(, "arguments": )" + arguments + "}]");
}

constexpr const char* kResult = R"([{"attribute": 0, "name": "n.output"}])";

TEST(Lint, TellsEachMistakeWithItsPlace) {
    const struct {
        const char* method;
        const char* results;
        const char* arguments;
        const char* told;
    } rows[] = {
        {"addDubleLinear", kResult, "[]", R"(: unknown method "addDubleLinear", did you mean "addDoubleLinear"?)"},
        {"worldVisibility", "[]", "[]", ""},
        {"addDoubleLinear", kResult, R"([{"attribute": 0, "value": 1}, {"attribute": 2, "value": 1}])",
         ", arguments, attribute 1: missing\n"
         "record 0, n(addDoubleLinear), arguments, attribute 2: the method has no such attribute; its last is 1"},
        {"reverse", R"([{"attribute": 0, "name": "n.output.outputX"}])",
         R"([{"attribute": 0, "value": 1}, {"attribute": 0, "value": [1]}])",
         ", arguments, attribute 0: 2 entries, 1 expected\n"
         "record 0, n(reverse), arguments, attribute 0: a number expected, not [1]"},
        {"reverse", R"([{"attribute": 0, "name": "n.outX"}])", R"([{"attribute": 0, "value": 1}])",
         R"(, results, attribute 0: "n.outX" is no plug of the method, whose result is on "outputX" or "outputY" or "outputZ")"},
        {"reverse", R"([{"attribute": 0, "name": "n"}])", R"([{"attribute": 0, "nmae": "n.inputX", "value": 1}])",
         R"(, results, attribute 0: "n" is no plug's name: it should be "node.attribute")"
         "\n"
         R"(record 0, n(reverse), results, attribute 0: "n" is no plug of the method, whose result is on "outputX" or "outputY" or "outputZ")"
         "\n"
         R"(record 0, n(reverse), arguments, attribute 0: nobody reads "nmae", did you mean "name"?)"},
        {"blendWeighted", kResult,
         R"([{"attribute": 0, "value": 1}, {"attribute": 1, "value": 1, "indices": [3]},
             {"attribute": 1, "value": 2, "indices": [3]}])",
         ", arguments, attribute 0: an entry needs 1 logical index, it has 0\n"
         "record 0, n(blendWeighted), arguments, attribute 1: indices [3] stand twice: only the last entry counts"},
        {"composeMatrix", R"([{"attribute": 0, "name": "n.outputMatrix"}])",
         R"([{"attribute": 0, "value": [90, 0, 0]}, {"attribute": 1, "value": [90, 0, 0]}, {"attribute": 2, "value": 0},
             {"attribute": 3, "value": [1, 1]}])",
         ", arguments, attribute 1: more than a full turn, are these degrees? Radians are read: [90,0,0]\n"
         "record 0, n(composeMatrix), arguments, attribute 3: 3 numbers expected, not [1,1]"},
        {"remapValue", R"([{"attribute": 0, "name": "n.outValue"}])",
         R"([{"attribute": 0, "value": 0}, {"attribute": 1, "value": 0}, {"attribute": 2, "value": 1},
             {"attribute": 3, "value": 0}, {"attribute": 4, "value": 1}, {"attribute": 5, "value": 0.5},
             {"attribute": 5, "value": 0}, {"attribute": 6, "value": 0}, {"attribute": 7, "value": 1},
             {"attribute": 7, "value": 1}])",
         ", arguments, attribute 5: the list should ascend: entry 0 is 0.5, entry 1 is 0\n"
         "record 0, n(remapValue), arguments, attribute 6: 1 entries, attribute 5 has 2"},
        {"curveFromMeshEdge", R"([{"attribute": 0, "name": "n.outputCurve"}])",
         R"([{"attribute": 0, "value": {"id": 0}}, {"attribute": 1, "value": {"id": 1}}])", ""},
        {"curveFromMeshEdge", R"([{"attribute": 0, "name": "n.outputCurve"}])",
         R"([{"attribute": 0, "value": {"id": 1}}, {"attribute": 1, "value": {"id": 1}}])",
         ", arguments, attribute 0: block 1 is not a mesh: "},
        {"curveFromMeshEdge", R"([{"attribute": 0, "name": "n.outputCurve"}])",
         R"([{"attribute": 0, "value": {"id": 2}}, {"attribute": 1, "name": "n.list"}])",
         ", arguments, attribute 0: no block 2: the resource file has 2\n"
         "record 0, n(curveFromMeshEdge), arguments, attribute 1: a block expected, {\"id\": N} of an index list"},
    };
    ResourceWriter writer;
    writer.add(Mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, mat4(1.0f)));
    writer.add(std::vector<unsigned int>{0, 1, 2});
    LintSettings settings;
    settings.resource = testing::TempDir() + "lint.bin";
    writer.write(*settings.resource);
    for (const auto& row : rows) {
        const std::string told = inWords(lint(record(row.method, row.results, row.arguments), settings));
        const std::string start = *row.told == '\0' ? "" : std::string("record 0, n(") + row.method + ")" + row.told;
        EXPECT_EQ(told.substr(0, start.size()), start) << told;
        EXPECT_EQ(told.empty(), start.empty()) << told;
    }
}

/// A change of one record of examples/arm, as a JSON patch below that record, and the one mistake that it makes.
struct BrokenManifest {
    const char* record;
    const char* patch;
    const char* told; ///< behind the record
};

const BrokenManifest kBroken[] = {
    {"reachRatio(multiplyDivide1D)", R"([{"op": "replace", "path": "", "value": [1]}])",
     "a record should be an object, not [1]"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "remove", "path": "/node_name"}])", "no \"node_name\""},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "replace", "path": "/node_name", "value": 7}])",
     "\"node_name\" should be a text, not 7"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "remove", "path": "/method"}])", "no \"method\""},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "replace", "path": "/method", "value": "multiplyDivide2D"}])",
     "unknown method \"multiplyDivide2D\", did you mean \"multiplyDivide1D\"?"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "add", "path": "/argument", "value": []}])",
     "nobody reads \"argument\", did you mean \"arguments\"?"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "remove", "path": "/results/0"}])", "results, attribute 0: missing"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "remove", "path": "/arguments/2"}])",
     "arguments, attribute 2: missing"},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "add", "path": "/arguments/-", "value": {"attribute": 3, "value": 1}}])",
     "arguments, attribute 3: the method has no such attribute; its last is 2"},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "add", "path": "/arguments/-", "value": {"attribute": 2, "value": 1}}])",
     "arguments, attribute 2: 2 entries, 1 expected"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "add", "path": "/arguments/-", "value": 3}])",
     "arguments: an entry should be an object, not 3"},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "add", "path": "/arguments/-", "value": {"attribute": -1, "value": 3}}])",
     "arguments: an entry's \"attribute\" should be a whole number, not -1"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "add", "path": "/arguments/1/value", "value": 3}])",
     "arguments, attribute 1: an entry has a \"name\" and a \"value\": nobody reads the value"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "add", "path": "/arguments/-", "value": {"attribute": 2}}])",
     "arguments, attribute 2: an entry needs a \"name\" or a \"value\""},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "replace", "path": "/arguments/1", "value": {"attribute": 1, "value": true}}])",
     "arguments, attribute 1: a number expected, not true"},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "replace", "path": "/arguments/1/name", "value": "reachRatio.input2.input2x"}])",
     "arguments, attribute 1: \"input2x\" leads nowhere in \"reachRatio.input2.input2x\": what is read is \"input2\""},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "replace", "path": "/arguments/1/name", "value": "reachRation.input2"}])",
     "arguments, attribute 1: Cannot find plug \"reachRation.input2\""},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "replace", "path": "/arguments/1/name", "value": "reachRatio.input2[x]"}])",
     "arguments, attribute 1: \"reachRatio.input2[x]\" is no plug's name: \"input2[x]\" is no attribute and no "
     "element"},
    {"reachRatio(multiplyDivide1D)", R"([{"op": "replace", "path": "/arguments/1/name", "value": "reachRatio"}])",
     "arguments, attribute 1: \"reachRatio\" is no plug's name: it should be \"node.attribute\""},
    {"reachRatio(multiplyDivide1D)",
     R"([{"op": "replace", "path": "/results/0/name", "value": "reachRatio.input1.input1X"}])",
     "results, attribute 0: \"reachRatio.input1.input1X\" is no plug of the method, whose result is on \"outputX\" or "
     "\"outputY\" or \"outputZ\""},
    {"armSkin(skinMesh)", R"([{"op": "replace", "path": "/arguments/6/name", "value": "armSkin.matrix[4]"}])",
     "arguments, attribute 3: \"armSkin.matrix\" has no element 4: what is read is a default value"},
    {"armSkin(skinMesh)", R"([{"op": "replace", "path": "/arguments/11/value", "value": {"id": 6}}])",
     "arguments, attribute 5: block 6 is read as a skin weight list here, as a delta list before"},
    {"armSkin(skinMesh)", R"([{"op": "replace", "path": "/arguments/11/value", "value": {"id": 900}}])",
     "arguments, attribute 5: no block 900: the resource file has 19"},
    {"armSkin(skinMesh)",
     R"([{"op": "replace", "path": "/arguments/11", "value": {"attribute": 5, "name": "armSkin.weightList"}}])",
     "arguments, attribute 5: a block expected, {\"id\": N} of a skin weight list, not the plug "
     "\"armSkin.weightList\""},
    {"armShapes(blendShapeMesh)", R"([{"op": "replace", "path": "/arguments/4/indices", "value": [1]}])",
     "arguments, attribute 3: an entry needs 2 logical indices, it has 1"},
    {"armShapes(blendShapeMesh)", R"([{"op": "replace", "path": "/arguments/4/value", "value": 5}])",
     "arguments, attribute 3: a plug, or {\"id\": N} of a mesh expected, not 5"},
    {"bicepWeight(blendWeighted)", R"([{"op": "replace", "path": "/arguments/5/indices", "value": [1]}])",
     "arguments, attribute 1: indices [1] stand twice: only the last entry counts"},
    {"bicepWeight(blendWeighted)", R"([{"op": "replace", "path": "/arguments/5/indices", "value": 2}])",
     "arguments, attribute 1: \"indices\" should be a list of whole numbers, not 2"},
    {"tension(remapValue)",
     R"([{"op": "replace", "path": "/arguments/6/name", "value": "tension.value[2].value_Position"},
                               {"op": "replace", "path": "/arguments/7/name", "value": "tension.value[1].value_Position"}])",
     "arguments, attribute 5: the list should ascend: entry 1 is 1, entry 2 is 0.5"},
    {"tension(remapValue)", R"([{"op": "remove", "path": "/arguments/10"}])",
     "arguments, attribute 6: 2 entries, attribute 5 has 3"},
    {"gloveScales(scaleConstraint)", R"([{"op": "replace", "path": "/arguments/1/value", "value": 0}])",
     "arguments, attribute 1: true or false expected, not 0"},
    {"gloveScales(scaleConstraint)", R"([{"op": "replace", "path": "/arguments/4/value", "value": [1, 1]}])",
     "arguments, attribute 4: 3 numbers expected, not [1,1]"},
    {"handControl(transform)",
     R"([{"op": "replace", "path": "/arguments/1", "value": {"attribute": 1, "value": [0, 90, 0]}}])",
     "arguments, attribute 1: more than a full turn, are these degrees? Radians are read: [0,90,0]"},
    {"handControl(transform)", R"([{"op": "replace", "path": "/arguments", "value": 3}])",
     "arguments: should be a list of entries, not 3"},
};

TEST(Lint, TellsEachOfThirtyBrokenManifestsAtItsPlace) {
    const std::string arm = std::string(ZENT_SOURCE_DIR) + "/examples/arm/";
    const json manifest = json::parse(std::ifstream(arm + "manifest.json"));
    LintSettings settings;
    settings.resource = arm + "resource.bin";
    settings.hasScene = true;
    scene::readSceneFile(arm + "scene.json", *settings.resource, scene::Scene::current());
    std::vector<std::string> all;
    for (const BrokenManifest& row : kBroken) {
        json broken = manifest;
        const auto found = std::find_if(broken.begin(), broken.end(), [&row](const json& record) {
            return record["node_name"].get<std::string>() + "(" + record["method"].get<std::string>() + ")" ==
                   row.record;
        });
        ASSERT_NE(found, broken.end()) << row.record;
        *found = found->patch(json::parse(row.patch));
        const std::vector<Mistake> mistakes = lint(broken, settings);
        ASSERT_FALSE(mistakes.empty()) << row.patch;
        EXPECT_EQ(mistakes.front().record, static_cast<std::size_t>(found - broken.begin()));
        const std::string told = mistakes.front().inWords();
        EXPECT_EQ(told.substr(told.size() - std::min(told.size(), std::strlen(row.told))), row.told) << row.patch;
        all.push_back(told);
    }
    scene::Scene::current().clear();
    // The document quotes what is told; an "N" of a quote stands for a number, unless it is told so.
    all.push_back(
        inWords(lint(record("curveFromMeshEdge", R"([{"attribute": 0, "name": "n.outputCurve"}])",
                            R"([{"attribute": 0, "value": {"id": 1}}, {"attribute": 1, "value": {"id": 6}}])"),
                     LintSettings{settings.resource, false})));
    test::expectTold(test::documentedQuotes(std::string(ZENT_SOURCE_DIR) + "/docs/errors.md", {"What lint tells"}), all,
                     {R"(a block expected, {"id": N} of a skin weight list, not the plug "armSkin.weightList")",
                      R"(a plug, or {"id": N} of a mesh expected, not 5)"});
}

TEST(Lint, TellsPlugsThatLeadNowhere) {
    const std::string scene = testing::TempDir() + "lint.json";
    std::ofstream(scene)
        << R"({"nodes": {"n": {"output": {"compound": {"outputX": 1, "outputY": 2}}}, "|a|b": {"t": 1}}})";
    scene::readSceneFile(scene, "", scene::Scene::current());
    const auto told = [](const char* plug) {
        LintSettings settings;
        settings.hasScene = true;
        const std::string arguments = R"([{"attribute": 0, "name": ")" + std::string(plug) + "\"}]";
        return inWords(
            lint(record("reverse", R"([{"attribute": 0, "name": "n.outputX"}])", arguments.c_str()), settings));
    };
    EXPECT_EQ(told("n.output.outputY"), "");
    EXPECT_EQ(told("b.t"), "");
    EXPECT_NE(
        told("n.output.outputZ").find(R"("outputZ" leads nowhere in "n.output.outputZ": what is read is "output")"),
        std::string::npos);
    EXPECT_NE(told("n.nothing").find("Cannot find plug"), std::string::npos);
    EXPECT_NE(told("c.t").find("Cannot find plug"), std::string::npos);
    scene::Scene::current().clear();
}

TEST(Lint, FindsNothingInTheManifestsOfTheProject) {
    namespace fs = std::filesystem;
    int manifests = 0;
    for (const char* folder : {"examples", "tests", "docs", "bench", "fuzz"}) {
        for (const fs::directory_entry& entry :
             fs::recursive_directory_iterator(std::string(ZENT_SOURCE_DIR) + "/" + folder)) {
            if (entry.path().extension() != ".json") {
                continue;
            }
            const json manifest = json::parse(std::ifstream(entry.path()));
            if (!manifest.is_array()) {
                continue;
            }
            LintSettings settings;
            const fs::path directory = entry.path().parent_path();
            if (fs::exists(directory / "resource.bin")) {
                settings.resource = (directory / "resource.bin").string();
            }
            if (fs::exists(directory / "scene.json")) {
                scene::readSceneFile((directory / "scene.json").string(), settings.resource.value_or(""),
                                     scene::Scene::current());
                settings.hasScene = true;
            }
            EXPECT_EQ(inWords(lint(manifest, settings)), "") << entry.path();
            scene::Scene::current().clear();
            ++manifests;
        }
    }
    EXPECT_GE(manifests, 2);
}

} // namespace
} // namespace zent
