#pragma once

#include <string>

namespace zent::test {

/// What a run of a program printed, and its exit status.
struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs a command in a fresh folder of this test.
Outcome run(const std::string& command);

/// Runs zentcheck with arguments as a shell would take them, in a fresh folder of this test.
Outcome zentcheck(const std::string& arguments);

/// A file's bytes; none if it cannot be opened.
std::string readFile(const std::string& path);

/// Writes a file into this test's folder and gives its path.
std::string writeFile(const std::string& name, const std::string& content);

} // namespace zent::test
