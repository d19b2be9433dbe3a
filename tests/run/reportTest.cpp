#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <filesystem>

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
    EXPECT_FALSE(shapes.contains("polygons")); // this mesh is a block of the resource file, which has no faces

    report("--points 179 " + arm);
    EXPECT_EQ(lines.at(4)["shapes"], json({{"kind", "mesh"}, {"count", 180}, {"omitted", true}}));
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
