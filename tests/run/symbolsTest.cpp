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

TEST(SymbolsTest, APlugInExportsItsEntryPointsAndNothingElse) {
    for (const std::string name : {"ZentMayaNodes", "ZentMayaTools"}) {
        const std::string path = std::string(ZENT_PLUGIN_FOLDER) + "/" + name + ".so";
        // The address sanitizer adds a marker of its own for the exported array.
        EXPECT_EQ(outputOf("nm -D --defined-only --format=just-symbols " + path + " | grep -v ^__odr_asan"),
                  "MApiVersion\n_Z16initializePlugin7MObject\n_Z18uninitializePlugin7MObject\n")
            << name;
        EXPECT_NE(outputOf("readelf -d " + path).find("soname: [" + name + "]"), std::string::npos) << name;
    }
}

} // namespace
} // namespace zent::test
