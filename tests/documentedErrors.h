#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace zent::test {

/// The texts that the first cells of the tables quote under some headings of a document.
inline std::vector<std::string> documentedQuotes(const std::string& document, const std::set<std::string>& headings) {
    std::vector<std::string> quotes;
    std::ifstream file(document);
    bool isAsked = false;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("## ", 0) == 0) {
            isAsked = headings.count(line.substr(3)) != 0;
        }
        const std::string cell = isAsked && line.rfind("| `", 0) == 0 ? line.substr(0, line.find(" | ", 1)) : "";
        const std::regex quoted("`([^`]+)`");
        for (std::sregex_iterator text(cell.begin(), cell.end(), quoted), end; text != end; ++text) {
            quotes.push_back((*text)[1]);
        }
    }
    return quotes;
}

/// A quote as a pattern: numbers, plugs and quoted names stand for any others.
inline std::regex patternOf(std::string quote) {
    const std::pair<const char*, const char*> steps[] = {{R"(\\\|)", "|"},
                                                         {R"(\b(arm|add|follicle)(\.\w+)?(\[[0-9]+\])?)", "PLUG"},
                                                         {R"([\\^$.|?*+()\[\]{}])", R"(\$&)"},
                                                         {"\"[^\"]+\"", "\"[^\"]*\""},
                                                         {R"(\b(N|[0-9]+)\b)", "[0-9]+"},
                                                         {R"((\\\.){3})", ".*"},
                                                         {"PLUG", "[^ ]+"}};
    for (const auto& [from, to] : steps) {
        quote = std::regex_replace(quote, std::regex(from), to);
    }
    return std::regex(quote);
}

/// Each quote is a part of some text that a test has been told, or is told elsewhere.
inline void expectTold(const std::vector<std::string>& quotes, const std::vector<std::string>& told,
                       const std::set<std::string>& elsewhere) {
    ASSERT_GT(quotes.size(), 10U);
    for (const std::string& quote : quotes) {
        const std::regex pattern = patternOf(quote);
        EXPECT_TRUE(elsewhere.count(quote) != 0 ||
                    std::any_of(told.begin(), told.end(),
                                [&pattern](const std::string& text) { return std::regex_search(text, pattern); }))
            << "no error is told like this: " << quote;
    }
}

} // namespace zent::test
