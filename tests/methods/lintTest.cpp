#include "zent/methods/Lint.h"

#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/values/ResourceWriter.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

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
