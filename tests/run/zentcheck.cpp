#include "run/zentcheck.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zent::test {

namespace {

std::string folder() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) /
                                       ("zentcheck." + std::to_string(getpid())) / test->test_suite_name() /
                                       test->name();
    std::filesystem::create_directories(path);
    return path.string();
}

} // namespace

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
    return run(std::string(ZENTCHECK) + " " + arguments);
}

std::string writeFile(const std::string& name, const std::string& content) {
    std::string path = folder() + "/" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

} // namespace zent::test
