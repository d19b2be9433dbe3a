#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace zent::test {
namespace {

using nlohmann::json;

/// What differs between any two runs.
std::string withoutTimes(std::string text) {
    for (const std::string key : {"\"seconds\":", "\"time\":"}) {
        for (std::size_t at = 0; (at = text.find(key, at)) != std::string::npos; at += key.size()) {
            const std::size_t begin = at + key.size();
            text.erase(begin, text.find_first_of(",}", text[begin] == '"' ? text.find('"', begin + 1) : begin) - begin);
        }
    }
    return text;
}

/// A record of 2 + 3 that has another method, another result or another number in place of the first.
json sum(const std::string& node, const json& result = 5, const std::string& method = "addDoubleLinear") {
    return {{"node_name", node},
            {"method", method},
            {"results", {{{"attribute", 0}, {"value", result}}}},
            {"arguments", {{{"attribute", 0}, {"value", 2}}, {{"attribute", 1}, {"value", 3}}}}};
}

json curve(const std::string& node, int result) {
    json record = sum(node, result, "animCurve");
    record["arguments"] = json::array();
    // The time, the keys, their tangents and types, no infinities, no weights.
    const json ones{1, 1};
    const json straight{2, 2};
    const std::vector<json> values{{4},  {0, 10}, {0, 10},  ones, ones, straight,
                                   ones, ones,    straight, {0},  {0},  {false}};
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (const json& value : values[i]) {
            record["arguments"].push_back({{"attribute", i}, {"value", value}});
        }
    }
    return record;
}

/// Many records, of which some mismatch, fail or are ignored.
json mixed(bool hasErrors) {
    json records = json::array();
    for (int i = 0; i < 300; ++i) {
        const std::string node = "n" + std::to_string(i);
        records.push_back(i % 7 == 3                 ? sum(node, 5.5 + i)
                          : i % 31 == 9              ? sum(node, 5, i % 2 == 0 ? "addDoubleLinaer" : "worldVisibility")
                          : hasErrors && i % 43 == 7 ? sum(node, "no.plug")
                                                     : sum(node));
    }
    if (hasErrors) {
        records.insert(records.begin() + 250, {{"method", "addDoubleLinear"}});
    }
    return records;
}

TEST(JobsTest, SayWhatOneProcessSays) {
    const std::string folder = writeFile("", "");
    const std::string right = json{sum("a"), sum("b"), sum("c")}.dump();
    json curves = json::array(); // of which no more than 1,000 are sampled
    for (int i = 0; i < 1030; ++i) {
        curves.push_back(curve("c" + std::to_string(i), 99));
    }
    struct Row {
        const char* name;
        std::string manifest;
        std::vector<std::string> options;
        int status;
    };
    const std::string report = "--results " + folder + "r.jsonl ";
    const std::string log = "--output-directory " + folder;
    for (const Row& row : std::vector<Row>{
             {"right", right, {"", report, "--verbose 2"}, 0},
             {"none", "[]", {"", report}, 0},
             {"object", json{{"x", sum("a")}, {"y", sum("b")}}.dump(), {"", report}, 0},
             {"mismatches", mixed(false).dump(), {"", "--stop-on-first-error false", report, log + " --verbose 1"}, 1},
             {"stops", mixed(false).dump(), {report + "--stop-on-first-error true"}, 1},
             {"errors", mixed(true).dump(), {"--stop-on-first-error false", report, report + log, "--strict"}, 2},
             {"noLog", mixed(false).dump(), {"--output-directory /no/such", report + "--output-directory /no/such"}, 2},
             {"fullDisk", mixed(false).dump(), {"--results /dev/full"}, 2},
             {"syntax", right.substr(0, right.size() - 1) + ", {\"node_name\": }]", {"", report}, 2},
             {"skip", mixed(false).dump(), {report + "--skip addDoubleLinear"}, 0},
             {"curves", curves.dump(), {report}, 1}}) {
        const std::string manifest = writeFile(std::string(row.name) + ".json", row.manifest);
        for (const std::string& options : row.options) {
            const auto runBy = [&](const std::string& jobs, std::string& files) {
                std::filesystem::remove(folder + "r.jsonl");
                const Outcome outcome = run(std::string(ZENTCHECK) + " " + manifest + " " + options + jobs);
                files = withoutTimes(readFile(folder + "r.jsonl")) + readFile(folder + "ZentCheckLog.txt");
                return outcome;
            };
            std::string files;
            const Outcome one = runBy("", files);
            EXPECT_EQ(one.status, row.status) << row.name << options << one.err;
            for (const char* jobs : {" --jobs 1", " --jobs 2", " --jobs 3", " --jobs 7"}) {
                std::string filesOfJobs;
                const Outcome many = runBy(jobs, filesOfJobs);
                EXPECT_EQ(many.status, one.status) << row.name << options << jobs << many.err;
                EXPECT_EQ(many.out, one.out) << row.name << options << jobs;
                EXPECT_EQ(many.err, one.err) << row.name << options << jobs;
                EXPECT_TRUE(filesOfJobs == files) << row.name << options << jobs;
            }
        }
    }
    const std::vector<json> lines = readLines(folder + "r.jsonl");
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(), [](const json& line) { return line.contains("samples"); }),
              1000);
    EXPECT_EQ(run(std::string("cat ") + folder + "right.json | " ZENTCHECK " --jobs 2 /dev/stdin").status, 0);
}

TEST(JobsTest, AKilledWorkerIsAnError) {
    const std::string folder = writeFile("", "");
    json records = json::array();
    for (int i = 0; i < 40000; ++i) { // more lines than there is room for in pipes
        records.push_back(sum("n" + std::to_string(i)));
    }
    const std::string call = std::string(ZENTCHECK) + " " + writeFile("long.json", records.dump()) + " --verbose 1";
    const std::string whole = run(call).out;
    const std::string script = "cd " + folder + "\nrm -f fifo; mkfifo fifo\n" + call +
                               " --jobs 2 >fifo & pid=$!\n"
                               "exec 3<fifo; dd bs=1 count=1 status=none <&3 >cut\n"
                               "kill -9 $(cat /proc/$pid/task/$pid/children)\n"
                               "cat <&3 >>cut; wait $pid\n";
    const Outcome outcome = run("bash " + writeFile("kill.sh", script));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("error: a worker process was ended by signal 9 (Killed); of 40000 records, "),
              std::string::npos)
        << outcome.err;
    const std::string cut = readFile(folder + "cut");
    EXPECT_LT(cut.size(), whole.size());
    EXPECT_EQ(whole.compare(0, cut.size(), cut), 0);
}

TEST(JobsTest, WhatTheyDoNotGoWithIsTold) {
    const std::string manifest = writeFile("m.json", "[]");
    for (const char* option : {"--chain", "--plugin x.so", "--lint", "--snapshot s.json"}) {
        const Outcome outcome = run(std::string(ZENTCHECK) + " --jobs 2 " + option + " " + manifest);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.err.find("--jobs"), std::string::npos) << outcome.err;
    }
}

} // namespace
} // namespace zent::test
