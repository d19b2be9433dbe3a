#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace zent::test {

/// What a run of a program printed, and its exit status.
struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs a command in a fresh folder of this test.
Outcome run(const std::string& command);

/// Runs zentcheck with arguments as a shell would take them, in a fresh folder of this test. A check that ends is run
/// once more by two worker processes and once with a report, which must come to the same.
Outcome zentcheck(const std::string& arguments);

/// The lines of a results file.
std::vector<nlohmann::json> readLines(const std::string& path);

/// A file's bytes; none if it cannot be opened.
std::string readFile(const std::string& path);

/// Writes a file into this test's folder and gives its path.
std::string writeFile(const std::string& name, const std::string& content);

} // namespace zent::test
