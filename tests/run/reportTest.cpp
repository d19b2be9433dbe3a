#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace zent::test {
namespace {

using nlohmann::json;

const std::string kArm = ZENT_EXAMPLES "/arm/";

/// A sum of 2 and 3.
std::string record(const std::string& expected, const std::string& method = "addDoubleLinear") {
    return R"({"node_name": "n", "method": ")" + method + R"(", "results": [{"attribute": 0, "value": )" + expected +
           R"(}], "arguments": [{"attribute": 0, "value": 2}, {"attribute": 1, "value": 3}]})";
}

std::string write(const std::vector<std::string>& records) {
    std::string text;
    for (const std::string& one : records) {
        text += (text.empty() ? "[" : ",\n") + one;
    }
    return writeFile("manifest.json", text + "]");
}

class ReportTest : public testing::Test {
protected:
    Outcome report(const std::string& arguments) {
        path = writeFile("results.jsonl", "");
        Outcome outcome = zentcheck("--results " + path + " " + arguments);
        lines = readLines(path);
        return outcome;
    }

    std::string path;
    std::vector<json> lines;
};

TEST_F(ReportTest, EveryRecordHasALineAndTheRunGoesOn) {
    const std::string manifest =
        write({record("5"), record("5.25"), record("5", "addDoubleLinaer"), record("\"no.plug\""),
               record("5", "multDoubleLinear"), record("5", "worldVisibility"), R"({"node_name": "m"})", record("5")});
    const Outcome outcome = report("--skip multDoubleLinear " + manifest);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("\n8 records: 2 match, 1 mismatch, 2 error, 1 ignored (unknown method), 2 skipped; "
                               "worst 0.25 at n(addDoubleLinear)\n"),
              std::string::npos)
        << outcome.err;
    ASSERT_EQ(lines.size(), 10U);
    EXPECT_EQ(lines[0]["format"], "zent-results");
    EXPECT_EQ(lines[0]["records"], 8);
    EXPECT_EQ(lines[0]["tolerance"], 0.001);
    EXPECT_EQ(lines[0]["manifest"], manifest);
    EXPECT_EQ(lines[0]["flags"]["skip"], "multDoubleLinear");
    const char* outcomes[] = {"match", "mismatch", "ignored", "error", "skipped", "skipped", "error", "match"};
    for (std::size_t i = 0; i < std::size(outcomes); ++i) {
        EXPECT_EQ(lines[i + 1]["index"], i);
        EXPECT_EQ(lines[i + 1]["outcome"], outcomes[i]);
        EXPECT_GE(lines[i + 1]["seconds"], 0.0);
    }
    EXPECT_EQ(lines[2]["maya"][0]["value"], 5.25);
    EXPECT_EQ(lines[2]["zent"][0]["value"], 5.0);
    EXPECT_EQ(lines[2]["statistics"][0]["greatest"], 0.25);
    EXPECT_EQ(lines[2]["statistics"][0]["over"], 1);
    EXPECT_EQ(lines[3]["nearest"], "addDoubleLinear");
    EXPECT_EQ(lines[4]["error"], "Cannot find plug \"no.plug\"");
    EXPECT_EQ(lines[7]["node"], "m");
    EXPECT_EQ(lines[7]["method"], "");
    const json& summary = lines[9]["summary"];
    EXPECT_EQ(summary["unknown"], json::array({"addDoubleLinaer"}));
    EXPECT_EQ(summary["stopped"], false);
    EXPECT_EQ(summary["worst"]["index"], 1);
}

TEST_F(ReportTest, StopsWhereItIsTold) {
    const Outcome outcome = report("--stop-on-first-error true " + write({record("5"), record("6"), record("5")}));
    EXPECT_EQ(outcome.status, 1);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[3]["summary"]["stopped"], true);
    EXPECT_EQ(lines[3]["summary"]["records"], 2);
}

TEST_F(ReportTest, TakesAnyManifest) {
    report(writeFile("object.json", "{\"b\": " + record("5") + ", \"a\": " + record("6") + "}"));
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1]["outcome"], "mismatch"); // by the order of their names
    EXPECT_EQ(report(writeFile("number.json", "3")).status, 2);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1]["outcome"], "error");
    EXPECT_EQ(report(writeFile("null.json", "null")).status, 0);
    EXPECT_EQ(lines.size(), 2U);
}

TEST_F(ReportTest, WarnsAndWidens) {
    const std::string manifest = write({record("5.0005"), record("5")});
    EXPECT_EQ(report("--warn 0.0001 " + manifest).status, 0);
    EXPECT_EQ(lines.at(1).value("warning", false), true);
    EXPECT_FALSE(lines.at(2).contains("warning"));
    EXPECT_EQ(lines.at(3)["summary"]["warnings"], 1);
    EXPECT_EQ(report("--epsilon 0.0001 " + manifest).status, 1);
    EXPECT_EQ(report("--epsilon 0.0001 --relative 0.0002 " + manifest).status, 0);
}

TEST_F(ReportTest, AShapeThatMismatchesIsWrittenOut) {
    const std::string arm = "--scene " + kArm + "scene.json " + kArm + "faults.json " + kArm + "resource.bin";
    EXPECT_EQ(report(arm).status, 1);
    const json& line = lines.at(4);
    EXPECT_EQ(line["point"], 80);
    const json& statistics = line["statistics"][0];
    EXPECT_EQ(statistics["at"], json::array({80}));
    EXPECT_EQ(statistics["over"], 1);
    const json& shapes = line["shapes"];
    EXPECT_EQ(shapes["kind"], "mesh");
    EXPECT_EQ(shapes["count"], statistics["count"]);
    // Three floats of a point are 12 bytes, and so 16 letters.
    const auto point = [&shapes](const char* side) { return shapes[side].get<std::string>().substr(80 * 16, 16); };
    EXPECT_EQ(shapes["maya"].get<std::string>().size(), shapes["count"].get<std::size_t>() * 16);
    // (36.2091, 124.448, -4.47494) and (55.0724, 183.241, -12.0979), the values in the log, by Python's struct and
    // base64
    EXPECT_EQ(point("maya"), "HtYQQofl+EKsMo/A");
    EXPECT_EQ(point("zent"), "JEpcQsk9N0MnkUHB");
    // 14 rings of 12 quads, of 4-byte integers; the first face is 0, 1, 13, 12.
    const json& polygons = shapes["polygons"];
    EXPECT_EQ(polygons["counts"].get<std::string>().size(), 14U * 12U * 4U / 3U * 4U);
    EXPECT_EQ(polygons["vertices"].get<std::string>().substr(0, 22), "AAAAAAEAAAANAAAADAAAAA");

    report("--points 179 " + arm);
    EXPECT_EQ(lines.at(4)["shapes"], json({{"kind", "mesh"}, {"count", 180}, {"omitted", true}}));
}

TEST_F(ReportTest, TellsTheInputsByName) {
    const std::string arm = "--scene " + kArm + "scene.json " + kArm + "faults.json " + kArm + "resource.bin";
    report(arm);
    std::map<std::string, json> inputs;
    for (const json& input : lines.at(3)["inputs"]) { // an orientConstraint
        inputs[input["name"]] = input;
    }
    EXPECT_EQ(inputs["offset"]["type"], "Euler");
    EXPECT_EQ(inputs["offset"]["plug"], "wristTurns.offset");
    EXPECT_EQ(inputs["constraintRotateOrder"],
              json({{"name", "constraintRotateOrder"}, {"type", "Int"}, {"value", 0}}));
    EXPECT_EQ(inputs["targetWeight"]["plug"], json({"wristTurns.elbowW0", "wristTurns.handControlW1"}));
    EXPECT_EQ(inputs["targetWeight"]["value"].size(), 2U);
    EXPECT_EQ(lines.at(2)["inputs"][0]["name"], "input1X"); // the channel of its plug
    EXPECT_FALSE(lines.at(4).contains("inputs"));           // a deformer's closure has its worst point's
}

TEST_F(ReportTest, SamplesACurveAroundItsInput) {
    std::string arguments = R"({"attribute": 0, "value": 12})";
    const auto add = [&arguments](int attribute, const std::vector<std::string>& values) {
        for (const std::string& value : values) {
            arguments += R"(, {"attribute": )" + std::to_string(attribute) + R"(, "value": )" + value + "}";
        }
    };
    add(1, {"0", "10", "20", "30", "40"});
    add(2, {"0", "10", "50", "20", "0"});
    for (const int tangents : {3, 4, 6, 7}) {
        add(tangents, {"1", "1", "1", "1", "1"});
    }
    for (const int types : {5, 8}) {
        add(types, {"2", "2", "2", "2", "2"}); // straight from key to key
    }
    add(9, {"0"});
    add(10, {"0"});
    add(11, {"false"});
    report(writeFile("curve.json", R"([{"node_name": "c", "method": "animCurve", "results": [{"attribute": 0,
        "value": 17}], "arguments": [)" +
                                       arguments + "]}]"));
    const json& samples = lines.at(1)["samples"];
    EXPECT_EQ(samples["at"], 12);
    EXPECT_EQ(samples["keys"], json({{0, 0}, {10, 10}, {20, 50}, {30, 20}}));
    double last = -3.1;
    for (const json& point : samples["points"]) {
        const double x = point[0];
        const double y = x < 0    ? 0
                         : x < 10 ? x
                         : x < 20 ? 10 + 4 * (x - 10)
                         : x < 30 ? 50 - 3 * (x - 20)
                                  : 20 - 2 * (x - 30);
        EXPECT_NEAR(point[1].get<double>(), y, 1e-4) << x;
        EXPECT_LT(x - last, 0.2);
        EXPECT_GT(x, last);
        last = x;
    }
    EXPECT_NEAR(last, 33, 1e-4);
}

TEST_F(ReportTest, WritesJUnitAndThePage) {
    const std::string manifest = write({record("5"), record("6"), record("5", "clmap")});
    const std::string folder = std::filesystem::path(manifest).parent_path();
    const std::string files = "--junit " + folder + "/j.xml --report " + folder + "/p.html ";
    const Outcome outcome = run("TMPDIR=" + folder + " " + std::string(ZENTCHECK) + " " + files + manifest);
    EXPECT_EQ(outcome.status, 1);
    const std::string junit = readFile(folder + "/j.xml");
    EXPECT_NE(junit.find("tests=\"3\" failures=\"1\" errors=\"0\" skipped=\"1\""), std::string::npos) << junit;
    EXPECT_NE(junit.find(manifest), std::string::npos); // there is no results file to name
    EXPECT_NE(readFile(folder + "/p.html").find(R"("method":"addDoubleLinear")"), std::string::npos);
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        EXPECT_EQ(file.path().string().find("zentcheck-"), std::string::npos); // the temporary results
    }
    EXPECT_EQ(zentcheck("--report " + manifest + " " + manifest).status, 2);
    EXPECT_FALSE(readFile(manifest).empty());
    EXPECT_EQ(zentcheck("--junit /dev/full " + manifest).status, 2);
    EXPECT_NE(zentcheck("--junit x --report x " + manifest).err.find("both reports in one file: x\n"),
              std::string::npos);
    EXPECT_NE(run("TMPDIR=/proc " + std::string(ZENTCHECK) + " " + files + manifest).err.find("temporary file"),
              std::string::npos);
    EXPECT_EQ(zentcheck("--report /no/such/folder/page.html " + manifest).status, 2);
}

TEST_F(ReportTest, AFileThatCannotBeWrittenIsToldAndTheLogIsWhole) {
    const std::string manifest = write({record("6")});
    Outcome outcome = zentcheck("--results /dev/full " + manifest);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("error: cannot write results file /dev/full: No space left on device\n"),
              std::string::npos);
    EXPECT_NE(outcome.out.find("===== unmatch on n(addDoubleLinear) =====\n"), std::string::npos);
    outcome = zentcheck("--results /no/such/folder/file " + manifest);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("error: cannot write results file /no/such/folder/file: No such file"),
              std::string::npos);
    EXPECT_EQ(zentcheck("--results " + manifest + " " + manifest).status, 2);
    EXPECT_EQ(readFile(manifest), "[" + record("6") + "]");
    EXPECT_EQ(zentcheck("--warn 1 " + manifest).status, 2); // it has no use without a report
}

TEST_F(ReportTest, StrictTakesARunOfNothingAsAFailure) {
    const std::string good = write({record("5")});
    const std::pair<std::string, std::string> cases[] = {
        {good, ""},
        {writeFile("empty.json", "[]"), "error: --strict: nothing ran\n"},
        {"--skip addDoubleLinear " + good, "error: --strict: nothing ran\n"},
        {"--skip 'clamp;' " + good, "error: --strict: --skip names clamp, which no record has\n"},
        {writeFile("unknown.json", "[" + record("5") + "," + record("5", "clmap") + "]"),
         "error: --strict: unknown method clmap\n"},
    };
    for (const auto& [arguments, text] : cases) {
        const Outcome outcome = zentcheck("--strict " + arguments);
        EXPECT_EQ(outcome.status, text.empty() ? 0 : 2) << arguments;
        EXPECT_NE(outcome.err.find(text), std::string::npos) << outcome.err;
    }
    EXPECT_EQ(zentcheck("--strict --quiet " + good).err, "");
}

TEST_F(ReportTest, ATerminalShowsATableOfMethods) {
    const std::string command = std::string(ZENTCHECK) + " --strict " + write({record("5"), record("5.5")});
    const Outcome outcome = run("script -qec '" + command + "' /dev/null");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.out.find("addDoubleLinear         2         1         0         0  0.5 at n(addDoubleLinear)"),
              std::string::npos)
        << outcome.out;
}

} // namespace
} // namespace zent::test
