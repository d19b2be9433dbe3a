#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

namespace zent::test {
namespace {

std::string outputOf(const std::string& command) {
    std::string text;
    std::array<char, 256> chunk{};
    FILE* pipe = popen(command.c_str(), "r");
    while (pipe != nullptr && fgets(chunk.data(), static_cast<int>(chunk.size()), pipe) != nullptr) {
        text += chunk.data();
    }
    EXPECT_TRUE(pipe != nullptr && pclose(pipe) == 0) << command;
    return text;
}

TEST(SymbolsTest, ThePlugInExportsItsEntryPointsAndNothingElse) {
    // The address sanitizer adds a marker of its own for the exported array.
    EXPECT_EQ(
        outputOf(std::string("nm -D --defined-only --format=just-symbols ") + ZENT_PLUGIN + " | grep -v ^__odr_asan"),
        "MApiVersion\n_Z16initializePlugin7MObject\n_Z18uninitializePlugin7MObject\n");
    EXPECT_NE(outputOf(std::string("readelf -d ") + ZENT_PLUGIN).find("soname: [ZentMayaNodes]"), std::string::npos);
}

} // namespace
} // namespace zent::test
