// examples/puppets: an export of a rig with a node of each type. Its script works the outputs out on its own.
#include "run/zentcheck.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

namespace zent::test {
namespace {

using nlohmann::json;

const std::string kPuppets = ZENT_EXAMPLES "/puppets/";
const std::string kOfPuppets = "--scene " + kPuppets + "scene.json ";

TEST(PuppetsTest, TheFilesAreWhatTheScriptWrites) {
    const std::string folder = std::filesystem::path(writeFile("folder", "")).parent_path().string();
    ASSERT_EQ(run(std::string(ZENT_PYTHON) + " -B " + kPuppets + "make.py " + folder).status, 0);
    for (const char* name : {"scene.json", "left-out.txt"}) {
        EXPECT_EQ(readFile(folder + "/" + name), readFile(kPuppets + name)) << name;
    }
}

TEST(PuppetsTest, EachMethodOnEachNodeTypeHasRecordsThatMatch) {
    const std::string made = writeFile("made.json", "") + " " + writeFile("made.bin", "");
    const Outcome exported = zentcheck(kOfPuppets + "--make-manifest " + made);
    ASSERT_EQ(exported.status, 0) << exported.err;
    const json nodes = json::parse(readFile(kPuppets + "scene.json"))["nodes"];
    std::set<std::pair<std::string, std::string>> left;
    for (const json& record : json::parse(readFile(made.substr(0, made.find(' '))))) {
        const std::string node = record["node_name"];
        const auto found = std::find_if(nodes.items().begin(), nodes.items().end(), [&node](const auto& item) {
            return item.key().substr(item.key().rfind('|') + 1) == node.substr(node.rfind('|') + 1);
        });
        ASSERT_NE(found, nodes.items().end()) << node;
        left.emplace(record["method"], found.value()["type"]);
    }
    const json methods = json::parse(zentcheck("--list-methods --json").out)["methods"];
    EXPECT_EQ(methods.size(), 94U);
    for (const json& method : methods) {
        std::set<std::string> types;
        for (const json& row : method["nodes"]) {
            for (const json& type : row["types"]) {
                types.insert(type["name"]);
            }
        }
        const bool isOfMany = types.size() > 8; // of every transform or shape
        for (const std::string& type : types) {
            EXPECT_TRUE(isOfMany || left.count({method["name"], type}) == 1) << method["name"] << " of " << type;
        }
        const auto first = left.lower_bound({method["name"], ""});
        EXPECT_TRUE(first != left.end() && first->first == method["name"]) << method["name"];
    }

    const Outcome checked = zentcheck(kOfPuppets + "--ignore-deformer false --stop-on-first-error false " + made);
    EXPECT_EQ(checked.status, 0);
    EXPECT_EQ(checked.out + checked.err, "");
    EXPECT_EQ(zentcheck("--lint " + kOfPuppets + made).status, 0);
}

TEST(PuppetsTest, EachNodeThatIsLeftOutIsTold) {
    const std::string made = writeFile("made.json", "") + " " + writeFile("made.bin", "");
    const std::string notes = zentcheck(kOfPuppets + "--make-manifest " + made).out;
    const std::size_t start = notes.find("left out:\n");
    std::istringstream told(notes.substr(start, notes.find("node types without") - start));
    std::vector<std::string> lines;
    std::string line;
    for (std::getline(told, line); std::getline(told, line);) {
        lines.push_back(line.substr(2));
    }
    std::sort(lines.begin(), lines.end());
    std::istringstream expected(readFile(kPuppets + "left-out.txt"));
    for (std::size_t i = 0; std::getline(expected, line); ++i) {
        ASSERT_LT(i, lines.size()) << line;
        EXPECT_EQ(lines[i].substr(0, line.size()), line);
    }
    const std::string types = notes.substr(notes.find("node types without"));
    EXPECT_NE(types.find(" deformFlare\n"), std::string::npos);
    EXPECT_EQ(types.find(" deformBend\n"), std::string::npos); // its nonLinear node has a record
}

TEST(PuppetsTest, EachNamespaceIsExportedAlone) {
    std::size_t records = 0;
    for (const std::string name : {"left", "right"}) {
        const std::string made = writeFile(name + ".json", "") + " " + writeFile(name + ".bin", "");
        const std::string options = kOfPuppets + "--namespace " + name + " ";
        EXPECT_EQ(zentcheck(options + "--make-manifest " + made).status, 0);
        const std::size_t count = json::parse(readFile(made.substr(0, made.find(' ')))).size();
        EXPECT_TRUE(count > 200 && (records == 0 || count == records)) << count;
        records = count;
        EXPECT_EQ(zentcheck(options + "--ignore-deformer false " + made).status, 0);
        EXPECT_EQ(zentcheck(kOfPuppets + "--ignore-deformer false " + made).status, 2); // their names are none
    }
}

} // namespace
} // namespace zent::test
