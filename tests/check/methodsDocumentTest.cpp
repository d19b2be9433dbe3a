#include "zent/proxies/Registry.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace zent {
namespace {

/// The first cells of the table's rows: "| `methodName` | ...".
std::vector<std::string> documentedMethods() {
    const std::string start = "| `";
    std::vector<std::string> methods;
    std::ifstream file(std::string(ZENT_DOCS) + "/methods.md");
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, start.size(), start) == 0) {
            methods.push_back(line.substr(start.size(), line.find('`', start.size()) - start.size()));
        }
    }
    return methods;
}

TEST(MethodsDocument, TellsEveryMethodInTheOrderOfTheRegistry) {
    std::vector<std::string> registered;
    for (const auto& proxy : makeProxies()) {
        registered.push_back(proxy->name());
    }
    EXPECT_EQ(documentedMethods(), registered);
}

} // namespace
} // namespace zent
