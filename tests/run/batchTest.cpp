#include "run/zentcheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace zent::test {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

/// Sums of 2 and 3, one for each expected result.
std::string manifestOf(const std::vector<std::string>& expected) {
    json records = json::array();
    for (const std::string& value : expected) {
        records.push_back({{"node_name", "n"},
                           {"method", "addDoubleLinear"},
                           {"results", {{{"attribute", 0}, {"value", json::parse(value)}}}},
                           {"arguments", {{{"attribute", 0}, {"value", 2}}, {{"attribute", 1}, {"value", 3}}}}});
    }
    return records.dump();
}

class BatchTest : public testing::Test {
protected:
    BatchTest() { fs::remove_all(folder + "out"); }

    /// A check with a manifest of its name, of two records that match.
    void add(const std::string& name, const std::vector<std::string>& expected = {"5", "5"}) {
        writeFile(name + ".json", manifestOf(expected));
        list += json{{"name", name}, {"manifest", name + ".json"}}.dump() + "\n";
    }
    Outcome batch(const std::string& options) {
        return zentcheck("--batch " + writeFile("list.jsonl", list) + " --results " + folder + "out " + options);
    }
    Outcome misbehave(const std::string& options) { return batch("--plugin " ZENT_MISBEHAVING " " + options); }
    std::set<std::string> files() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder + "out")) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
    std::string file(const std::string& name) const { return folder + "out/" + name + ".jsonl"; }

    std::string folder = writeFile("", "");
    std::string list;
};

TEST_F(BatchTest, WhatBefallsACheckIsItsErrorAlone) {
    for (const char* name : {"a", "crash", "killed", "killedOnce", "z"}) {
        add(name);
    }
    add("off", {"5", "5.25"});
    add("unread", {"5", "\"no.plug\""});
    writeFile("killedOnce.json.mark", "");
    list += R"({"name": "missing", "manifest": "nowhere.json"})"
            "\n"
            R"({"name": "unscened", "manifest": "a.json", "scene": "nowhere.json"})"
            "\n";
    std::map<std::string, std::string> failed{{"crash", "its process was ended by signal 6 (Aborted)"},
                                              {"killed", "its process was ended by signal 9 (Killed)"},
                                              {"missing", "cannot open file "},
                                              {"unscened", "nowhere.json"}};
    std::string limit;
#ifndef __SANITIZE_ADDRESS__ // which needs more than any limit
    add("memory");
    failed["memory"] = "it needs more memory than the 200 MB that it may";
    limit = "--memory 200 ";
#endif
    const Outcome outcome = misbehave("--jobs 2 " + limit + "--junit " + folder + "all.xml");
    EXPECT_EQ(outcome.status, 2);
    for (const auto& [name, error] : failed) {
        EXPECT_NE(outcome.out.find("failed " + name + ": " + (name == "unscened" ? "" : error)), std::string::npos)
            << outcome.out;
        const std::vector<json> lines = readLines(file(name));
        ASSERT_GE(lines.size(), 3U) << name;
        const json& record = lines[lines.size() - 2];
        EXPECT_EQ(record["outcome"], "error");
        EXPECT_NE(record["error"].get<std::string>().find(error), std::string::npos) << record;
        EXPECT_EQ(lines.back()["summary"]["error"], 1) << name;
        EXPECT_EQ(lines.back()["summary"]["records"], lines.size() - 2) << name;
    }
    EXPECT_EQ(readLines(file("crash"))[1]["outcome"], "match"); // what it had by then stays
    EXPECT_NE(outcome.out.find("mismatch off: 2 records: 1 match, 1 mismatch"), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("failed unread: 2 records: 1 match, 0 mismatch, 1 error"), std::string::npos);
    EXPECT_NE(outcome.err.find(": 3 match, 1 mismatch, " + std::to_string(failed.size() + 1) + " failed;"),
              std::string::npos)
        << outcome.err;
    for (const char* name : {"a", "killedOnce", "z"}) {
        EXPECT_EQ(readLines(file(name)).back()["summary"]["match"], 2);
    }
    EXPECT_EQ(files().size(), failed.size() + 5); // and nothing else, such as what was not whole
    const std::string junit = readFile(folder + "all.xml");
    EXPECT_NE(junit.find("signal 6 (Aborted)"), std::string::npos);
}

TEST_F(BatchTest, ACheckThatDoesNotEndIsEnded) {
    add("hang");
    EXPECT_EQ(misbehave("--timeout 0.2").status, 2);
    EXPECT_EQ(readLines(file("hang"))[2]["error"], "it took longer than the 0.2 s that it may");
}

TEST_F(BatchTest, AnInterruptWaitsForWhatRunsAndTheNextEndsIt) {
    for (const char* name : {"interrupt", "left"}) {
        add(name);
    }
    Outcome outcome = misbehave("--jobs 1");
    EXPECT_EQ(outcome.status, 128 + 2);
    EXPECT_NE(outcome.err.find("2 checks: 1 match, 0 mismatch, 0 failed, 1 not run;"), std::string::npos)
        << outcome.err;
    EXPECT_EQ(files(), std::set<std::string>{"interrupt.jsonl"});

    outcome = batch("--resume");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.err.find("2 checks: 2 match"), std::string::npos) << outcome.err;

    list.clear();
    add("interruptTwice");
    EXPECT_EQ(misbehave("").status, 128 + 15);
    EXPECT_EQ(files().size(), 2U);
}

TEST_F(BatchTest, WithoutRoomForResultsNoMoreChecksStart) {
    for (const char* name : {"full", "left"}) {
        add(name);
    }
    const Outcome outcome = misbehave("--jobs 1");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("No space left on device; no more checks were started"), std::string::npos)
        << outcome.err;
    EXPECT_TRUE(files().empty());
    EXPECT_EQ(batch("--resume").status, 0);
    EXPECT_EQ(files().size(), 2U);
}

TEST_F(BatchTest, ResumeRunsWhatHasNoWholeResults) {
    for (const char* name : {"whole", "cut", "empty", "none"}) {
        add(name);
    }
    ASSERT_EQ(batch("").status, 0);
    std::string whole = readFile(file("whole"));
    whole.replace(whole.find("node"), 4, "nodE"); // a run would write it anew
    writeFile("out/whole.jsonl", whole);
    const std::string cut = readFile(file("cut"));
    writeFile("out/cut.jsonl", cut.substr(0, cut.size() - 1));
    writeFile("out/empty.jsonl", "");
    fs::remove(file("none"));
    EXPECT_EQ(batch("--resume").status, 0);
    EXPECT_EQ(readFile(file("whole")), whole);
    for (const char* name : {"cut", "empty", "none"}) {
        EXPECT_EQ(readLines(file(name)).back()["summary"]["match"], 2) << name;
    }
}

TEST_F(BatchTest, NamesStayInTheFolder) {
    const std::string names[] = {
        "../../out-of-it",           "/tmp/out-of-it",     "a/b", "a%2Fb", ".hidden", "..", std::string(300, 'x'),
        std::string(299, 'x') + "y", "line\nbreak \x1b[2J"};
    writeFile("m.json", manifestOf({"5.25"}));
    for (const std::string& name : names) {
        list += json{{"name", name}, {"manifest", "m.json"}}.dump() + "\n";
    }
    const auto outside = [this] {
        return std::distance(fs::recursive_directory_iterator(folder), fs::recursive_directory_iterator());
    };
    batch("--jobs 1");
    const auto before = outside();
    fs::remove_all(folder + "out");
    const Outcome outcome = batch("");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outside(), before);
    EXPECT_EQ(files().size(), std::size(names));
    EXPECT_EQ(files().count("a%2Fb.jsonl") + files().count("a%252Fb.jsonl") + files().count("%2Ehidden.jsonl"), 3U);
    EXPECT_EQ(outcome.out.find('\x1b'), std::string::npos);
}

TEST_F(BatchTest, WrongLinesAreToldAndTheOthersRun) {
    add("good");
    const std::vector<std::pair<std::string, std::string>> wrong{
        {"{", "parse error"},
        {"[]", "no object"},
        {R"({"manifest": "good.json"})", "\"name\" is missing"},
        {R"({"name": "n"})", "\"manifest\" is missing"},
        {R"({"name": 3, "manifest": "good.json"})", "\"name\" should be a text"},
        {R"({"name": "", "manifest": "good.json"})", "\"name\" should be a text"},
        {R"({"name": "good", "manifest": "good.json"})", "the name \"good\" is that of line 1, too"},
        {R"({"name": "n", "manifest": "good.json", "scnee": "s"})", "unknown key \"scnee\""},
        {R"({"name": "n", "manifest": "good.json", "scene": "s", "scenes": ["s"]})", "do not go together"},
        {R"({"name": "n", "manifest": "good.json", "scenes": []})", "\"scenes\" should be a list"},
        {R"({"name": "n", "manifest": "good.json", "flags": {"epsilom": 1}})", "there is no flag \"epsilom\""},
        {R"({"name": "n", "manifest": "good.json", "flags": {"epsilon": "x"}})", "should be a number"},
        {R"({"name": "n", "manifest": "good.json", "flags": {"epsilon": [1]}})", "should be a text, a number"},
        {R"({"name": "n", "manifest": "good\u0000.json"})", "holds a zero"},
        {std::string(1 << 21, ' '), "longer than any line can be"},
    };
    for (const auto& [line, problem] : wrong) {
        list += line + "\n";
    }
    list += "\n \r\n"
            R"({"name": "off", "manifest": "good.json", "flags": {"epsilon": -1}})"; // without its end
    const Outcome outcome = batch("");
    EXPECT_EQ(outcome.status, 2);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        const std::size_t at = outcome.err.find("list.jsonl: line " + std::to_string(i + 2) + ": ");
        ASSERT_NE(at, std::string::npos) << wrong[i].first;
        EXPECT_NE(outcome.err.substr(at, outcome.err.find('\n', at) - at).find(wrong[i].second), std::string::npos)
            << outcome.err.substr(at, 200);
    }
    EXPECT_NE(outcome.err.find("17 checks: 1 match, 1 mismatch, 15 failed"), std::string::npos) << outcome.err;
}

TEST_F(BatchTest, ShardsAreAPartitionThatALongerListKeeps) {
    std::map<std::string, int> shardOf;
    const auto runShards = [&](int expected) {
        for (int i = 1; i <= 3; ++i) {
            fs::remove_all(folder + "out");
            ASSERT_EQ(batch("--shard " + std::to_string(i) + "/3").status, 0);
            for (const std::string& name : files()) {
                const auto [found, isNew] = shardOf.try_emplace(name, i);
                EXPECT_EQ(found->second, i) << name;
            }
        }
        EXPECT_EQ(shardOf.size(), expected);
    };
    for (int i = 0; i < 12; ++i) {
        add("rig" + std::to_string(i));
    }
    runShards(12);
    add("first");
    std::rotate(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(list.rfind("{")), list.end());
    runShards(13);
}

TEST_F(BatchTest, APatternFindsWhatLiesBesideTheManifests) {
    const fs::path arm = ZENT_EXAMPLES "/arm";
    for (const char* rig : {"one", "two"}) {
        fs::create_directories(folder + "rigs/" + rig);
        for (const char* name : {"manifest.json", "resource.bin", "scene.json"}) {
            fs::copy_file(arm / name, folder + "rigs/" + rig + "/" + name, fs::copy_options::overwrite_existing);
        }
    }
    for (const char* frame : {"1", "2"}) {
        fs::copy_file(arm / "scene.json", folder + "rigs/two/scene." + frame + ".json",
                      fs::copy_options::overwrite_existing);
    }
    fs::remove(folder + "rigs/two/scene.json");
    const Outcome outcome =
        zentcheck("--batch '" + folder + "rigs/*/manifest.json' --results " + folder + "out --timeout 300");
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    EXPECT_EQ(files(), (std::set<std::string>{"one.jsonl", "two%2Fscene.1.jsonl", "two%2Fscene.2.jsonl"}));
    EXPECT_EQ(readLines(file("one")).back()["summary"]["match"], 63);
    EXPECT_EQ(zentcheck("--batch '" + folder + "rigs/*/nothing' --results " + folder + "out").status, 2);
}

} // namespace
} // namespace zent::test
