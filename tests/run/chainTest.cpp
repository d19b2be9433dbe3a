#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace zent::test {
namespace {

using nlohmann::json;

const std::string kArm = ZENT_EXAMPLES "/arm/";

class ChainTest : public testing::Test {
protected:
    /// A chained run of the arm with a manifest of its own; its records' lines by node and method.
    void chain(const json& manifest) {
        const std::string path = writeFile("results.jsonl", "");
        outcome = zentcheck("--chain --results " + path + " --scene " + kArm + "scene.json " +
                            writeFile("manifest.json", manifest.dump()) + " " + kArm + "resource.bin");
        for (const json& line : readLines(path)) {
            if (line.contains("index")) {
                lines[line["node"].get<std::string>() + " " + line["method"].get<std::string>()] = line;
            } else if (line.contains("summary")) {
                summary = line["summary"]["chain"];
            }
        }
    }

    Outcome outcome;
    std::map<std::string, json> lines;
    json summary;
};

json armManifest() {
    return json::parse(readFile(kArm + "manifest.json"));
}

TEST_F(ChainTest, TheArmMatchesFromItsControlsToItsSkin) {
    chain(armManifest());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(summary["match"], 63);
    EXPECT_EQ(summary["notes"], json::array());
    double added = 0.0;
    for (const auto& [name, line] : lines) {
        const json& chained = line.at("chain");
        EXPECT_EQ(chained["outcome"], "match") << name;
        if (chained["reads"].empty() && line["method"] == "animCurve") {
            EXPECT_EQ(chained["statistics"], line["statistics"]) << name;
        }
        added += chained["statistics"][0]["rms"].get<double>() - line["statistics"][0]["rms"].get<double>();
    }
    EXPECT_GT(added, 0.0); // errors add up
    // The skin reads its four influences, and the lattice's output.
    EXPECT_EQ(lines["armSkin skinMesh"]["chain"]["reads"].size(), 5U);
}

TEST_F(ChainTest, AFaultIsTheCauseOfAllThatFollows) {
    json manifest = armManifest();
    std::size_t fault = 0;
    while (manifest[fault]["method"] != "ikRPsolver") {
        ++fault;
    }
    for (json& argument : manifest[fault]["arguments"]) {
        if (argument["attribute"] == 4) { // the twist
            argument = {{"attribute", 4}, {"value", 0.25}};
        }
    }
    chain(manifest);
    EXPECT_EQ(outcome.status, 1);
    std::size_t off = 0;
    for (const auto& [name, line] : lines) {
        const bool isFault = line["index"] == fault;
        EXPECT_EQ(line["outcome"], isFault ? "mismatch" : "match") << name;
        if (const json& chained = line["chain"]; chained["outcome"] == "mismatch") {
            ++off;
            EXPECT_EQ(chained["path"].front()["index"], line["index"]);
            EXPECT_EQ(chained["path"].back()["index"], fault) << chained["why"];
            EXPECT_EQ(chained.contains("own"), isFault) << name;
        }
    }
    EXPECT_EQ(off, summary["mismatch"]);
    for (const char* follows :
         {"armSkin skinMesh", "wrist worldMatrix", "cord curve_from_cv", "strapFollows wireMesh"}) {
        EXPECT_EQ(lines[follows]["chain"]["outcome"], "mismatch") << follows;
    }
    for (const char* before : {"handControl worldMatrix", "handHeight animCurve", "clavicle worldMatrix"}) {
        EXPECT_EQ(lines[before]["chain"]["outcome"], "match") << before;
    }
    EXPECT_NE(outcome.out.find("chain: shoulder(joint) is off by "), std::string::npos);
    EXPECT_NE(outcome.out.find("because shoulder.rotate is ("), std::string::npos);
    EXPECT_NE(outcome.out.find("which is off in itself"), std::string::npos);
}

TEST_F(ChainTest, SeveralScenesHaveAResultsFileEach) {
    const std::string scene = kArm + "scene.json";
    const std::string second = writeFile("second.json", readFile(scene));
    const std::string results = writeFile("all.jsonl", "");
    const Outcome both = zentcheck("--chain --results " + results + " --scene " + scene + " --scene " + second + " " +
                                   kArm + "manifest.json " + kArm + "resource.bin");
    EXPECT_EQ(both.status, 0) << both.err;
    for (const char* name : {"all.scene.jsonl", "all.second.jsonl"}) {
        const auto all = readLines((std::filesystem::path(results).parent_path() / name).string());
        ASSERT_EQ(all.size(), 65U) << name;
        EXPECT_EQ(all.back()["summary"]["chain"]["match"], 63);
    }
}

} // namespace
} // namespace zent::test
