#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

// Runs a program's tests with a temporary folder of its own, so that tests that run side by side share no file.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    std::string folder = (std::filesystem::temp_directory_path() / "zent_test.XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr || ::setenv("TEST_TMPDIR", folder.c_str(), 1) != 0) {
        return EXIT_FAILURE;
    }
    const int status = RUN_ALL_TESTS();
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    return status;
}
