#include "run/zentcheck.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zent::test {

namespace {

std::string folder() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const std::filesystem::path path =
        std::filesystem::path(testing::TempDir()) / test->test_suite_name() / test->name();
    std::filesystem::create_directories(path);
    return path.string();
}

bool holds(const std::string& text, const std::vector<std::string>& parts) {
    return std::any_of(parts.begin(), parts.end(),
                       [&text](const std::string& part) { return text.find(part) != std::string::npos; });
}

/// The same log, the same verdict, and the same worst points.
void expectTheSameWithAReport(const std::string& arguments, const Outcome& outcome) {
    const std::string results = folder() + "/same.jsonl";
    std::string options = "--results " + results;
    for (const std::string flag : {"--ignore-deformer", "--stop-on-first-error"}) {
        options += holds(arguments, {flag}) ? "" : " " + flag + " true";
    }
    const Outcome report = run(std::string(ZENTCHECK) + " " + options + " " + arguments);
    EXPECT_EQ(report.status, outcome.status) << arguments << report.err;
    EXPECT_EQ(report.out, outcome.out) << arguments;
    std::string mismatches;
    for (const nlohmann::json& line : readLines(results)) {
        if (line.contains("point")) {
            mismatches += "error index: " + std::to_string(line["point"].get<int>()) + "\n";
        }
        if (line.value("outcome", "") == "mismatch") {
            mismatches += "===== unmatch on " + line["node"].get<std::string>() + "(" +
                          line["method"].get<std::string>() + ") =====\n";
        }
    }
    std::string logged;
    std::istringstream log(outcome.out);
    for (std::string line; std::getline(log, line);) {
        logged += line.rfind("error index: ", 0) == 0 || line.rfind("===== unmatch", 0) == 0 ? line + "\n" : "";
    }
    EXPECT_EQ(mismatches, logged) << arguments;
}

} // namespace

std::vector<nlohmann::json> readLines(const std::string& path) {
    std::vector<nlohmann::json> lines;
    std::istringstream file(readFile(path));
    for (std::string line; std::getline(file, line);) {
        lines.push_back(nlohmann::json::parse(line));
    }
    return lines;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

Outcome run(const std::string& command) {
    const std::string out = folder() + "/stdout";
    const std::string err = folder() + "/stderr";
    const std::string line = command + " >" + out + " 2>" + err;
    const int status = std::system(line.c_str()); // NOLINT(cert-env33-c): the test's own command line
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(out), readFile(err)};
}

Outcome zentcheck(const std::string& arguments) {
    const Outcome outcome = run(std::string(ZENTCHECK) + " " + arguments);
    const bool isCheck = (outcome.status == 0 || outcome.status == 1) &&
                         !holds(arguments, {"--results", "--strict", "--lint", "--list-methods", "--list-resources",
                                            "--disassemble", "--compile-expression", "--plugin", "--batch",
                                            "--make-manifest", "--output-directory", "--snapshot"}) &&
                         arguments.find("--scene ") == arguments.rfind("--scene "); // a report is of one scene
    if (isCheck) {
        const Outcome byJobs = run(std::string(ZENTCHECK) + " --jobs 2 " + arguments);
        EXPECT_EQ(byJobs.out + byJobs.err, outcome.out + outcome.err) << arguments;
        EXPECT_EQ(byJobs.status, outcome.status) << arguments;
        expectTheSameWithAReport(arguments, outcome);
    }
    return outcome;
}

std::string writeFile(const std::string& name, const std::string& content) {
    std::string path = folder() + "/" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

} // namespace zent::test
