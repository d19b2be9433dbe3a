#include "zent/methods/NodeTable.h"
#include "zent/proxies/Registry.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace zent {
namespace {

std::vector<std::string> splitAt(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find(separator, start)) != std::string::npos;
         start = end + separator.size()) {
        parts.push_back(text.substr(start, end - start));
    }
    parts.push_back(text.substr(start));
    return parts;
}

/// A type in the document's words.
std::string inWords(const ValueInfo& value) {
    const std::string type = value.type.substr(0, value.type.find_first_of("[{"));
    std::string words;
    for (const char letter : type == "Euler" ? "Vec3" : type) {
        if (std::isupper(static_cast<unsigned char>(letter)) != 0 && !words.empty()) {
            words += ' ';
        }
        words += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    if (value.type.size() == type.size()) {
        return words;
    }
    if (value.type[type.size()] == '{') {
        return (value.type.size() == type.size() + 2 ? "map of " : "item map of ") + words;
    }
    const std::string most = std::to_string(value.most);
    if (value.least != 0) {
        return "list of " + most + " " + words;
    }
    return "list of " + words + (value.most == 2 ? ", at most 2" : "");
}

/// "method | node types | 0: `plug`, type ... | 0: type ...", with no more of the document's words than that.
std::string told(const MethodInfo& method) {
    std::ostringstream row;
    row << method.name << " | " << nodeTypesInWords(method.name) << " |";
    for (std::size_t i = 0; i < method.results.size(); ++i) {
        const ValueInfo& value = method.results[i];
        const bool euler = value.type.compare(0, 5, "Euler") == 0;
        row << ' ' << i << ": `" << value.name << "`, " << inWords(value) << (euler ? ", " + value.type : "")
            << (method.isDeformer ? ", Vertex" : "");
    }
    row << " |";
    for (std::size_t i = 0; i < method.arguments.size(); ++i) {
        row << ' ' << i << ": " << inWords(method.arguments[i]);
    }
    return row.str();
}

/// A row of the document's table in that form.
std::string shortened(const std::string& line) {
    const std::vector<std::string> cells = splitAt(line, " | ");
    std::string row = std::regex_replace(cells[0], std::regex("[|` ]"), "") + " | " + cells[1] + " |";
    for (const std::string& output : splitAt(cells[2], "<br>")) {
        row += " " + std::regex_replace(output, std::regex(" \\(.*\\)$"), "");
    }
    row += " |";
    for (std::string argument : splitAt(std::regex_replace(cells[3], std::regex(" \\|$"), ""), "<br>")) {
        row += " " + std::regex_replace(argument, std::regex("^(\\d+: ).*\\(([^()]*)\\)$"), "$1$2");
    }
    return row;
}

TEST(MethodsDocument, TellsEveryMethodInTheOrderOfTheRegistryWithItsTypes) {
    std::vector<std::string> rows;
    std::ifstream file(std::string(ZENT_DOCS) + "/methods.md");
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, 3, "| `") == 0) {
            rows.push_back(shortened(line));
        }
    }
    const std::vector<MethodInfo> methods = methodInfos();
    ASSERT_EQ(rows.size(), methods.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i], told(methods[i]));
    }
}

TEST(Methods, HaveEachTheirAdapterCase) {
    std::ostringstream cases;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(ZENT_TESTS) + "/proxies")) {
        cases << std::ifstream(entry.path()).rdbuf();
    }
    for (const MethodInfo& method : methodInfos()) {
        EXPECT_NE(cases.str().find('"' + method.name + '"'), std::string::npos) << method.name;
    }
}

} // namespace
} // namespace zent
