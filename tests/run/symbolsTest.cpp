#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

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

// An empty entry would stand for the current folder, which may be a stranger's rig.
TEST(SymbolsTest, LibrariesAreLookedForBesideTheProgramsAlone) {
    for (const std::string name : {"ZentMayaNodes.so", "ZentMayaTools.so", "libzent_rig.so", "../bin/zentcheck"}) {
        const std::string path = std::string(ZENT_PLUGIN_FOLDER) + "/" + name;
        std::istringstream folders(outputOf("readelf -d " + path + " | sed -n 's/.*RUNPATH.*\\[\\(.*\\)\\]/\\1:/p'"));
        std::string folder;
        EXPECT_TRUE(std::getline(folders, folder, ':')) << name << " finds the stand-in by luck";
        do {
            EXPECT_EQ(folder.rfind("$ORIGIN/", 0), 0U) << name << ": \"" << folder << "\"";
        } while (std::getline(folders, folder, ':') && folder != "\n");
    }
}

// docs/maya-api.md: what is imported of Maya stands in a row of its class.
TEST(SymbolsTest, TheDocumentTellsWhatThePlugInsCall) {
    using Functions = std::set<std::string>; // each as "Class::function"
    Functions imported;
    std::istringstream names(outputOf("nm -DC --undefined-only --format=just-symbols " ZENT_PLUGIN_FOLDER
                                      "/ZentMayaNodes.so " ZENT_PLUGIN_FOLDER "/ZentMayaTools.so"));
    const std::regex name(R"((M[A-Z]\w+)::(\w+|operator\[\])(\(.*)?)");
    std::smatch parts;
    for (std::string line; std::getline(names, line);) {
        if (std::regex_match(line, parts, name) && parts[1] != parts[2]) {
            imported.insert(parts[1].str() + "::" + parts[2].str());
        }
    }
    EXPECT_GT(imported.size(), 100U);

    Functions told;
    std::ifstream document(ZENT_DOCS "/maya-api.md");
    const std::regex word(R"(`([^`]+)`)");
    const auto wordsOf = [&word](const std::string& cell) {
        return std::vector<std::string>{std::sregex_token_iterator(cell.begin(), cell.end(), word, 1), {}};
    };
    for (std::string line; std::getline(document, line);) {
        const std::size_t first = line.find(" | ");
        const std::size_t second = line.find(" | ", first + 1);
        if (line.rfind("| `", 0) == 0 && second != std::string::npos) {
            for (const std::string& function : wordsOf(line.substr(first, second - first))) {
                for (const std::string& type : wordsOf(line.substr(0, first))) {
                    told.insert(type + "::" + function);
                }
            }
        }
    }
    for (const std::string& function : imported) {
        EXPECT_EQ(told.count(function), 1U) << function << " is not told";
    }
}

} // namespace
} // namespace zent::test
