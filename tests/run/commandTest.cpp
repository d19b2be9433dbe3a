#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace zent::test {
namespace {

std::string record(const char* expected, const char* method = "addDoubleLinear") {
    return std::string(R"({"node_name": "n", "method": ")") + method + R"(", "results": [{"attribute": 0, "value": )" +
           expected + R"(}], "arguments": [{"attribute": 0, "value": 2}, {"attribute": 1, "value": 3}]})";
}

TEST(CommandTest, StatusTellsTheOutcome) {
    const std::string good = writeFile("good.json", "[" + record("5") + "]");
    const std::string bad = writeFile("bad.json", "[" + record("6") + "," + record("6", "multDoubleLinear") + "]");
    Outcome outcome = zentcheck(good);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out + outcome.err, "");

    outcome = zentcheck(bad);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.out.find("===== unmatch on n(addDoubleLinear) =====\n"), std::string::npos);

    EXPECT_EQ(zentcheck("--skip 'x;addDoubleLinear;;' " + bad).status, 0);
    EXPECT_EQ(zentcheck("--epsilon 1.5 " + bad).status, 0);
    EXPECT_EQ(zentcheck("--epsilon 0 " + good).status, 1);
    EXPECT_EQ(zentcheck(good + " /no/such/resource.bin").status, 0);
}

TEST(CommandTest, FailuresShowAnErrorAndGiveStatusTwo) {
    const std::pair<std::string, std::string> cases[] = {
        {"/no/such/manifest.json", "error: cannot open file /no/such/manifest.json"},
        {writeFile("malformed.json", "[1,"), "error: [json.exception.parse_error.101]"},
        {writeFile("comment.json", "[] // no"), "error: [json.exception.parse_error.101]"},
        {writeFile("number.json", "3"), "error: [json.exception.type_error.305]"},
        {writeFile("entry.json", R"([{"node_name": "n", "method": "clamp", "results": [{}]}])"),
         "error: std::exception"},
        {"--output-directory /no/such/directory " + writeFile("bad.json", "[" + record("6") + "]"),
         "error: failed on creating log file /no/such/directory/ZentCheckLog.txt"},
    };
    for (const auto& [arguments, text] : cases) {
        const Outcome outcome = zentcheck(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_NE(outcome.err.find(text), std::string::npos) << arguments << ": " << outcome.err;
    }
}

TEST(CommandTest, BadUsageIsToldAndGivesStatusTwo) {
    const std::string good = writeFile("good.json", "[]");
    for (const std::string& arguments :
         {std::string(), "--unknown " + good, "--verbose x " + good, "--epsilon x " + good,
          "--ignore-deformer maybe " + good, good + " resource extra"}) {
        const Outcome outcome = zentcheck(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_NE(outcome.err.find("Usage"), std::string::npos) << arguments << ": " << outcome.err;
        EXPECT_EQ(outcome.out, "") << arguments;
    }
}

TEST(CommandTest, LintTellsMistakesAndTheListTellsMethods) {
    const std::string good = writeFile("good.json", "[" + record("6") + "]");
    const std::string bad = writeFile("bad.json", "[" + record("6", "addDubleLinear") + "]");
    EXPECT_EQ(zentcheck("--lint " + good).status, 0);
    EXPECT_EQ(zentcheck("--lint " + good).out, "");
    EXPECT_EQ(zentcheck("--lint " + bad).status, 1);
    EXPECT_EQ(zentcheck("--lint " + bad).out, "record 0, n(addDubleLinear): unknown method \"addDubleLinear\", did you "
                                              "mean \"addDoubleLinear\"?\n");
    EXPECT_EQ(zentcheck("--lint /no/such/manifest.json").status, 2);
    EXPECT_NE(zentcheck("--list-methods").out.find("ikHandle (ikRPsolver)"), std::string::npos);
    EXPECT_EQ(zentcheck("--list-methods --json").out.rfind("{\n  \"methods\": [", 0), 0U);
}

TEST(CommandTest, ATerminalShowsASummaryAndNoRecordThatMatched) {
    const std::string command = std::string(ZENTCHECK) + " " + writeFile("good.json", "[" + record("5") + "]");
    const Outcome outcome = run("script -qec '" + command + "' /dev/null");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.rfind("zentcheck: all records that ran matched (", 0), 0U) << outcome.out;
    EXPECT_NE(run("script -qec '" + command + " --verbose 1' /dev/null").out.find("start running n"),
              std::string::npos);
}

TEST(CommandTest, WritesItsLogIntoTheOutputDirectory) {
    const std::string bad = writeFile("bad.json", "[" + record("6") + "]");
    const std::string directory = std::filesystem::path(bad).parent_path().string();
    const std::string log = directory + "/ZentCheckLog.txt";
    EXPECT_EQ(zentcheck("--output-directory " + directory + " " + writeFile("good.json", "[]")).status, 0);
    EXPECT_FALSE(std::filesystem::exists(log));
    const Outcome outcome = zentcheck("--output-directory " + directory + " " + bad);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_GT(std::filesystem::file_size(log), 0U);
}

TEST(CommandTest, WarnsOfIgnoredMethods) {
    const std::string manifest = writeFile("unknown.json", "[" + record("5", "unknown") + "]");
    const Outcome outcome = zentcheck(manifest);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "warning: ignored methods(1): [unknown]\n");
}

} // namespace
} // namespace zent::test
