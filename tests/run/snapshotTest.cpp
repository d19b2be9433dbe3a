// A snapshot stands for the scene that it was taken of: the same manifest over it gives the same log, byte for byte.
#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zent::test {
namespace {

const std::string kArm = ZENT_EXAMPLES "/arm/";

/// Checks over a scene and over its snapshot, and expects one log. Gives the first.
Outcome expectOneLog(const std::string& scene, const std::string& files, const std::string& flags = "") {
    const std::string options = " --verbose 2 --ignore-deformer false --stop-on-first-error false " + flags + " ";
    const std::string snapshot = writeFile("snapshot.json", "");
    const Outcome taken = zentcheck("--scene " + scene + " " + flags + " --snapshot " + snapshot + " " + files);
    EXPECT_EQ(taken.status, 0) << taken.err;
    EXPECT_EQ(taken.err + taken.out, "");
    EXPECT_NE(readFile(snapshot), "");
    const Outcome there = zentcheck("--scene " + scene + options + files);
    const Outcome here = zentcheck("--scene " + snapshot + options + files);
    EXPECT_EQ(here.out, there.out);
    EXPECT_EQ(here.err, there.err);
    EXPECT_EQ(here.status, there.status);
    return there;
}

/// A record that shows a number's bits in its log, and matches for 0 only.
std::string readings(const std::vector<std::string>& plugs) {
    std::string text;
    for (const std::string& plug : plugs) {
        text += (text.empty() ? "[" : ",") +
                (R"({"node_name": "n", "method": "addDoubleLinear", "results": [)" +
                 (R"({"attribute": 0, "name": ")" + plug)) +
                R"("}], "arguments": [{"attribute": 0, "name": ")" + plug + R"("}, {"attribute": 1, "value": 1}]})";
    }
    return text + "]";
}

std::string sources(const std::string& method, const std::string& plug) {
    return R"([{"node_name": "n", "method": ")" + method + R"(", "results": [{"attribute": 0, "value": 3}],
        "arguments": [{"attribute": 0, "name": ")" +
           plug + R"("}]}])";
}

TEST(SnapshotTest, TheExampleGivesItsLog) {
    EXPECT_EQ(expectOneLog(kArm + "scene.json", kArm + "manifest.json " + kArm + "resource.bin").status, 0);
    EXPECT_EQ(expectOneLog(kArm + "scene.json", kArm + "faults.json " + kArm + "resource.bin").status, 1);
}

/// What the results file of a chained check has of each record, and its notes.
std::vector<nlohmann::json> chainedOver(const std::string& scene, const std::string& files) {
    const std::string results = writeFile("results.jsonl", "");
    EXPECT_EQ(
        zentcheck("--chain --results " + results + " --ignore-deformer false --scene " + scene + " " + files).status,
        0);
    std::vector<nlohmann::json> lines;
    for (nlohmann::json& line : readLines(results)) {
        if (line.contains("index")) {
            lines.push_back({line["node"], line["chain"]});
        } else if (line.contains("summary")) {
            lines.push_back(line["summary"]["chain"]);
        }
    }
    return lines;
}

// A chain goes through transforms that no record of the manifest is of.
TEST(SnapshotTest, AChainOverItGivesWhatItGivesOverTheScene) {
    const std::string files = kArm + "manifest.json " + kArm + "resource.bin";
    const std::string snapshot = writeFile("snapshot.json", "");
    ASSERT_EQ(zentcheck("--scene " + kArm + "scene.json --snapshot " + snapshot + " " + files).status, 0);
    const std::vector<nlohmann::json> there = chainedOver(kArm + "scene.json", files);
    EXPECT_EQ(there.size(), 64U);
    EXPECT_EQ(chainedOver(snapshot, files), there);
    // The clock of the expression is connected as it was.
    const auto connections = nlohmann::json::parse(readFile(snapshot))["connections"];
    EXPECT_EQ(std::count(connections.begin(), connections.end(), nlohmann::json({"time1.outTime", "muscle.time"})), 1);
}

TEST(SnapshotTest, ARigOfEveryMethodGivesItsLog) {
    const std::string scene = std::string(ZENT_EXAMPLES) + "/puppets/scene.json";
    const std::string made = writeFile("made.json", "") + " " + writeFile("made.bin", "");
    ASSERT_EQ(zentcheck("--scene " + scene + " --make-manifest " + made).status, 0);
    EXPECT_EQ(expectOneLog(scene, made).status, 0);
}

TEST(SnapshotTest, EachKindOfPlugGivesItsLog) {
    const std::string scene = writeFile("scene.json", R"({"nodes": {
        "a": {"c": {"compound": {"x": 1, "y": {"number": 0.1, "short": "sy", "alias": "why"}}}, "x": 3.1,
              "w": {"multi": {"3": 0.3, "9": 1e-310}}, "deep": {"multi": {"2": {"compound": {"l": {"multi": [1, 7]}}}}},
              "angles": {"multi": {}, "element": {"angle": 0}}, "type": 5},
        "|g|n": {"type": "joint", ".type": 2, "r": [{"angle": 33.3}, {"angle": 0.7, "unit": "radians", "type": 564}],
                 "t": {"time": 7.7, "unit": "palFrame"}, "text": "t", "nan": {"number": "nan"}, "inf": {"number": "-inf"},
                 "zero": -0.0, "pair": {"float2": [0.1, 2]}, "fed": 1, "fedList": {"multi": {"3": 5, "4": 6}}}},
        "connections": [["a.x", "n.fed"], ["a.w", "n.fedList"]]})");
    const std::string manifest =
        writeFile("manifest.json", readings({"a.c.x",       "a.x",      "a.why",  "a.sy",           "a.c.bogus",
                                             "a.w[3]",      "a.w[9]",   "a.w[5]", "a.deep[2].l[1]", "a.deep[7].l[4]",
                                             "a.angles[2]", "a.angles", "a.type", "n.type",         "n.r.rX",
                                             "|g|n.r.rY",   "n.t",      "n.text", "n.nan",          "n.inf",
                                             "n.zero",      "n.pair",   "n.fed",  "g|n.fedList[3]", "n.fedList[4]",
                                             "n.message"}));
    const Outcome outcome = expectOneLog(scene, manifest);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.out.find("0.6999999"), std::string::npos); // it tells what it read
}

TEST(SnapshotTest, TheReportOfAMeshFollicleFindsItsFaces) {
    const std::string scene = writeFile("scene.json", R"({"nodes": {
        "|m|mShape": {"worldMesh": {"multi": [{"mesh": {
            "points": [[0,0,0], [1,0,0], [1,1,0.3], [0,1,0], [2,0,0], [2,1,0]], "polygons": [[0,1,2,3], [1,4,5,2]],
            "uvSets": {"one": {"uvs": [], "polygons": [[], []]}, "two": {"uvs": [[0,0], [0.1,0], [1,1], [0,1]],
                       "polygons": [[0,1,2,3], []]}}, "matrix": [0.1,0,0,0, 0,1,0,0, 0,0,1,0, 0.7,0,0,1]}}]}},
        "pin": {"inputMesh": {"mesh": {"points": []}}, "mapSetName": "two", "outRotate": [0, 0, 0]}},
        "connections": [["mShape.worldMesh[0]", "pin.inputMesh"]]})");
    const std::string manifest = writeFile("manifest.json", R"([{"node_name": "n", "method": "follicleRotateMesh",
        "results": [{"attribute": 0, "name": "pin.outRotate"}], "arguments": [{"attribute": 0, "name": "pin.inputMesh"},
        {"attribute": 1, "value": 0.5}, {"attribute": 2, "value": 0.5}, {"attribute": 3, "value": 0},
        {"attribute": 3, "value": 1}, {"attribute": 3, "value": 2}, {"attribute": 3, "value": 3}]}])");
    const Outcome outcome = expectOneLog(scene, manifest);
    EXPECT_NE(outcome.out.find("\"polyCounts\":[4,4]"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("\"uvValues\":[[0.0,0.0],[0.1"), std::string::npos);
}

/// A scene of conversions and of connections at each level: of a compound, of a child and of an element.
const char* const kConnected = R"({"time": {"time": 5.3, "unit": "palFrame"}, "nodes": {
    "time1": {"type": "time", "outTime": {"time": 5}}, "a": {"type": "addDoubleLinear", "input1": 1, "input2": 2.5, "output": 3.5},
    "|j": {"type": "transform", "rotate": [{"angle": 90}, {"angle": 0}, {"angle": 0}], "translate": [1, 2, 3]},
    "u": {"type": "unitConversion", "input": {"angle": 90}, "conversionFactor": 57.29578, "output": 90},
    "r": {"type": "reverse", "input": [0, 0, 0], "output": [-89, 1, 1]},
    "m": {"type": "multiplyDivide", "input1": [0, 0, 0], "input2": [1, 2, 3], "operation": 1, "output": [1, 4, 9]},
    "p": {"type": "plusMinusAverage", "operation": 1, "input3D": {"multi": {"2": [0, 0, 0], "5": [0, 0, 1]}}, "output3D": [1, 4, 10]},
    "t": {"type": "timeToUnitConversion", "input": {"time": 0}, "output": 5.1},
    "c": {"type": "clamp", "input": {"compound": {"inputR": 0, "inputG": 0, "inputB": 1}},
          "min": {"compound": {"minR": 0, "minG": 0, "minB": 0}}, "max": {"compound": {"maxR": 9, "maxG": 9, "maxB": 9}},
          "output": {"compound": {"outputR": 5.1, "outputG": 3.5, "outputB": 1}}}},
    "connections": [["|j.rotate.rotateX", "u.input"], ["u.output", "r.input.inputX"], ["|j.translate", "m.input1"],
                    ["m.output", "p.input3D[2]"], ["time1.outTime", "t.input"], ["t.output", "c.input.inputR"],
                    ["a.output", "c.input.inputG"]]})";

TEST(SnapshotTest, ConnectionsStayWithTheConversionsOnTheWay) {
    const std::string scene = writeFile("scene.json", kConnected);
    const std::string made = writeFile("made.json", "") + " " + writeFile("made.bin", "");
    const std::string methods = "reverse;multiplyDivide3D;plusMinusAverage3D;clamp;addDoubleLinear"; // no conversion
    EXPECT_EQ(zentcheck("--scene " + scene + " --make-manifest --methods \"" + methods + "\" " + made).status, 0);
    EXPECT_EQ(expectOneLog(scene, made).status, 0);
    const auto connections = [](const std::string& file) {
        const auto list = nlohmann::json::parse(file)["connections"];
        return std::set<nlohmann::json>(list.begin(), list.end());
    };
    const std::string snapshot = std::filesystem::path(scene).parent_path() / "snapshot.json";
    EXPECT_EQ(connections(readFile(snapshot)), connections(kConnected));
}

/// A strip of quads as long as it takes, with UVs on every second one.
nlohmann::json longStrip() {
    constexpr int kColumns = 600;
    nlohmann::json points = nlohmann::json::array();
    nlohmann::json uvs = nlohmann::json::array();
    nlohmann::json faces = nlohmann::json::array();
    nlohmann::json corners = nlohmann::json::array();
    for (int i = 0; i < kColumns; ++i) {
        for (int row : {0, 1}) {
            points.push_back({i, row, 0.7});
            uvs.push_back({0.1 * i, row});
        }
        if (i > 0) {
            faces.push_back({2 * i - 2, 2 * i, 2 * i + 1, 2 * i - 1});
            corners.push_back(i % 2 == 0 ? faces.back() : nlohmann::json::array());
        }
    }
    return {{"mesh",
             {{"points", points}, {"polygons", faces}, {"uvSets", {{"map1", {{"uvs", uvs}, {"polygons", corners}}}}}}}};
}

TEST(SnapshotTest, ALargeMeshHasItsTopologyInTheFileOfItsShapes) {
    nlohmann::json file = nlohmann::json::parse(R"({"nodes": {"|m|mShape": {"worldMesh": {"multi": [0]}},
        "pin": {"inputMesh": {"mesh": null}, "outRotate": [0, 0, 0]}}, "connections": [["mShape.worldMesh[0]", "pin.inputMesh"]]})");
    file["nodes"]["|m|mShape"]["worldMesh"]["multi"][0] = longStrip();
    const std::string scene = writeFile("scene.json", file.dump());
    const std::string manifest = writeFile("manifest.json", R"([{"node_name": "n", "method": "follicleRotateMesh",
        "results": [{"attribute": 0, "name": "pin.outRotate"}], "arguments": [{"attribute": 0, "name": "pin.inputMesh"},
        {"attribute": 1, "value": 0.15}, {"attribute": 2, "value": 0.5}, {"attribute": 3, "value": 2},
        {"attribute": 3, "value": 4}, {"attribute": 3, "value": 5}, {"attribute": 3, "value": 3}]}])");
    const Outcome outcome = expectOneLog(scene, manifest);
    EXPECT_NE(outcome.out.find("\"polyCounts\":[4,4,4"), std::string::npos) << outcome.out.substr(0, 500);
    const std::filesystem::path folder = std::filesystem::path(scene).parent_path();
    const auto mesh = nlohmann::json::parse(
        readFile(folder / "snapshot.json"))["nodes"]["|m|mShape"]["worldMesh"]["multi"]["0"]["mesh"];
    EXPECT_EQ(mesh["uvSets"], nlohmann::json({"map1"}));
    EXPECT_TRUE(mesh.contains("topology") && !mesh.contains("polygons")) << mesh;
}

TEST(SnapshotTest, LargeShapesLieInAFileOfItsOwn) {
    const auto points = [](int count, const char* x) {
        std::string list;
        for (int i = 0; i < count; ++i) {
            list += (i == 0 ? "[" : ", [") + std::to_string(i) + x + ", 0, 0.7]";
        }
        return "[" + list + "]";
    };
    std::string knots = "0";
    for (int i = 1; i < 1000; ++i) {
        knots += ", " + std::to_string(i);
    }
    const std::string mesh =
        R"({"mesh": {"points": )" + points(1000, ".1") + R"(, "matrix": [1,0,0,0.5, 0,1,0,0, 0,0,1,0, 0.1,0,0,1]}})";
    const std::string curve = R"({"curve": {"degree": 1, "form": "open", "knots": [)" + knots + R"(], "points": )";
    const std::string exact = points(1000, ""); // but for 0.7
    const std::string scene = writeFile(
        "scene.json", R"({"nodes": {"n": {"c": )" + curve + std::regex_replace(exact, std::regex("0\\.7"), "0.5") +
                          "}}, \"d\": " + curve + exact + "}}}, \"b\": {\"type\": \"nonLinear\", \"out\": " + mesh +
                          ", \"in\": " + mesh + "}}}");
    const std::string manifest = writeFile("manifest.json", R"([
        {"node_name": "n", "method": "curveInfo", "results": [{"attribute": 0, "value": 999}], "arguments": [{"attribute": 0, "name": "n.c"}]},
        {"node_name": "n", "method": "curveInfo", "results": [{"attribute": 0, "value": 7}], "arguments": [{"attribute": 0, "name": "n.d"}]},
        {"node_name": "b", "method": "deformBendMesh", "results": [{"attribute": 0, "name": "b.out"}], "arguments": [
         {"attribute": 0, "name": "b.in"}, {"attribute": 1, "value": 1}, {"attribute": 2, "value": [1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]},
         {"attribute": 3, "value": 0.25}, {"attribute": 4, "value": -1}, {"attribute": 5, "value": 1}]}])");
    EXPECT_EQ(expectOneLog(scene, manifest).status, 1);
    const std::filesystem::path folder = std::filesystem::path(scene).parent_path();
    const std::string told = readFile(folder / "snapshot.json");
    EXPECT_EQ(nlohmann::json::parse(told)["resource"], "snapshot.json.bin");
    // Two meshes and one curve: the other would lose bits of 0.7.
    EXPECT_EQ(readFile(folder / "snapshot.json.bin").substr(0, 8), std::string("\3\0\0\0\0\0\0\0", 8));
    EXPECT_NE(told.find("0.7"), std::string::npos);
}

TEST(SnapshotTest, AnAngleKeepsItsUnit) {
    const std::string scene = writeFile("scene.json", R"({"nodes": {"n": {"a": {"angle": 90},
        "b": {"angle": 90, "unit": "minutes"}, "c": {"angle": 1.5, "unit": "radians"}}}})");
    const Outcome outcome = expectOneLog(scene, writeFile("manifest.json", readings({"n.a", "n.b", "n.c"})));
    EXPECT_NE(outcome.out.find("0.02617993"), std::string::npos) << outcome.out; // 1.5 degrees
}

TEST(SnapshotTest, WhatFailsFailsAlike) {
    const std::string scene = writeFile("scene.json", R"({"nodes": {
        "|a|x": {"v": 1}, "|b|x": {"v": 2}, "ns:m": {"v": 4}, "|ns:a|ns:x": {"v": 4},
        "s": {"c": {"curve": {"degree": 1, "form": "open", "knots": [0, 0.3], "points": [[0.1, 0, 0], [1, 0, 0.7]],
              "matrix": [0.1,0,0,0, 0,1,0,0, 0,0,1,0, 7,8,9,1]}}, "none": {"curve": null}},
        "d": {"in": {"curve": null}, "dead": {"curve": null}, "loose": {"lattice": null}, "own": {"curve": null}}},
        "connections": [["s.c", "d.in"], ["s.none", "d.dead"]]})");
    for (const std::string& plugs : {readings({"|a|x.v", "x.v"}), readings({"b|x.v", "s.no"}), readings({"", "s", "|"}),
                                     sources("curveInfo", "d.in"), sources("curveInfo", "d.dead"),
                                     sources("curveInfo", "d.own"), sources("curveInfo", "d.loose"),
                                     sources("follicleRotateMesh", "d.in"), std::string("[3]"), std::string("7")}) {
        expectOneLog(scene, writeFile("manifest.json", plugs));
    }
    EXPECT_EQ(expectOneLog(scene, writeFile("manifest.json", readings({"m.v", "|a|x.v"})), "--namespace ns").status, 1);

    const std::string good = writeFile("good.json", readings({"s.v"}));
    const std::string kept = writeFile("kept.json", "kept");
    const std::pair<std::string, std::string> cases[] = {
        {"--snapshot " + kept + " /no/such/file", "error: ZentSnapshot: cannot open file /no/such/file\n"},
        {"--snapshot /no/such/folder/s.json " + good, "error: ZentSnapshot: cannot write /no/such/folder/s.json\n"},
        {"--snapshot " + kept + " --frames 3-1 " + good, "frames should be such as \"1-24\""},
        {"--snapshot " + kept + " --frames 1-9 --step 0 " + good, "in steps above 0"},
        {"--snapshot " + kept + " --frames 1-9e9 " + good, "are too many"},
        {"--snapshot " + kept + " --scene " + scene + " " + good, "only a check without a report takes several"},
        {"--strict --scene " + scene + " " + good, "only a check without a report takes several"},
        {"--snapshot " + good + " " + good, "error: ZentSnapshot: cannot write " + good + ": it is read, too\n"},
        {"--make-manifest --snapshot " + kept + " " + kept + " " + kept + ".bin", "two files would have this name"},
        {"--make-manifest --frames 1-2 --snapshot a " + kept + " b", "--frames excludes --make-manifest"},
        {"--make-manifest " + kept + " /no/such/folder/r.bin", "error: cannot write /no/such/folder/r.bin\n"},
        {"--make-manifest --methods clmap " + kept + " r.bin", "unknown method \"clmap\", did you mean \"clamp\"?"},
        {"--snapshot " + kept + " " + writeFile("broken.json", "["),
         "error: ZentSnapshot: [json.exception.parse_error"},
    };
    for (const auto& [call, text] : cases) {
        const Outcome outcome = zentcheck("--scene " + scene + " " + call);
        EXPECT_EQ(outcome.status, 2) << call;
        EXPECT_NE(outcome.err.find(text), std::string::npos) << call << "\n" << outcome.err;
        EXPECT_EQ(readFile(kept), "kept") << call;
    }
}

TEST(SnapshotTest, EachFrameHasItsSceneAndItsTime) {
    const std::string scene = writeFile("scene.json", R"({"time": 5, "nodes": {
        "time1": {"type": "time", "outTime": {"time": 0}}, "n": {"t": {"time": 0}}},
        "connections": [["time1.outTime", "n.t"]]})");
    const std::string manifest = writeFile("manifest.json", R"([{"node_name": "n", "method": "addDoubleLinear",
        "results": [{"attribute": 0, "name": "n.t"}],
        "arguments": [{"attribute": 0, "value": 2}, {"attribute": 1, "value": 0.5}]}])");
    const std::string folder = std::filesystem::path(manifest).parent_path().string();
    const std::string take = "--scene " + scene + " --frames 1-3 --step 0.5 --snapshot " + folder;
    EXPECT_EQ(zentcheck(take + "/s.####.json " + manifest).status, 0);
    EXPECT_EQ(zentcheck(take + "/plain.json " + manifest).status, 0);
    const std::pair<const char*, int> cases[] = {{"s.0001.json", 1},    {"s.02.5.json", 0},  {"s.0003.json", 1},
                                                 {"plain.2.5.json", 0}, {"plain.3.json", 1}, {"plain.3.5.json", 2}};
    for (const auto& [name, status] : cases) {
        EXPECT_EQ(zentcheck("--scene " + folder + "/" + name + " " + manifest).status, status) << name;
    }

    const std::string scenes = "--scene " + folder + "/plain.2.5.json --scene " + folder + "/plain.3.json ";
    Outcome outcome = zentcheck(scenes + manifest);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.out.find("frame 2.5: all records that ran matched\nframe 3: mismatch\n"), std::string::npos);
    outcome = zentcheck(scenes + "--output-directory " + folder + " " + manifest);
    EXPECT_FALSE(std::filesystem::exists(folder + "/plain.2.5/ZentCheckLog.txt"));
    EXPECT_NE(readFile(folder + "/plain.3/ZentCheckLog.txt"), "");

    // The log of a run that found nothing is none, not that of the run before.
    const std::string log = writeFile("ZentCheckLog.txt", "earlier");
    EXPECT_EQ(zentcheck("--output-directory " + folder + " --scene " + folder + "/plain.2.5.json " + manifest).status,
              0);
    EXPECT_FALSE(std::filesystem::exists(log));
}

} // namespace
} // namespace zent::test
