#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <set>
#include <sstream>
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

// A studio's machine has no other library; the stand-in goes by a name that is not Maya's.
TEST(SymbolsTest, APlugInNeedsTheRuntimeAndMayasApiAlone) {
    for (const std::string name : {"ZentMayaNodes", "ZentMayaTools"}) {
        const std::string path = std::string(ZENT_PLUGIN_FOLDER) + "/" + name + ".so";
        const std::string needed = outputOf("readelf -d " + path + " | sed -n 's/.*(NEEDED).*\\[\\(.*\\)\\]/\\1/p'");
        EXPECT_NE(needed.find("libzent_openmaya.so\n"), std::string::npos) << name << needed;
        std::istringstream lines(needed);
        for (std::string library; std::getline(lines, library);) {
            const std::string stem = library.substr(0, library.find(".so"));
            const std::set<std::string> known{"libc",    "libm",    "libstdc++", "libgcc_s", "libzent_openmaya",
                                              "libasan", "libubsan"}; // the last two in a build with the sanitizers
            EXPECT_TRUE(known.count(stem) == 1 || stem == "ld-linux-x86-64") << name << " needs " << library;
        }
    }
}

} // namespace
} // namespace zent::test
