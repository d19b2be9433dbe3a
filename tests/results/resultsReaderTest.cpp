#include "zent/results/ResultsReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace zent {
namespace {

const std::string kHeader = R"({"format":"zent-results","version":1,"records":2,"tolerance":0.001})"
                            "\n";
const std::string kMatch = R"({"index":0,"node":"a","method":"m","outcome":"match","seconds":0})"
                           "\n";
const std::string kSummary = R"({"summary":{"records":1}})"
                             "\n";

struct Reading {
    std::vector<ResultRecord> records;
    bool isComplete = false;
    std::uint64_t malformed = 0;
    std::string firstMalformed;
};

Reading read(const std::string& text) {
    std::istringstream in(text);
    ResultsReader reader(in);
    Reading reading;
    ResultRecord record;
    while (reader.next(record)) {
        reading.records.push_back(record);
    }
    reading.isComplete = reader.isComplete();
    reading.malformed = reader.malformedLines();
    reading.firstMalformed = reader.firstMalformed();
    return reading;
}

TEST(ResultsReader, TellsAWholeFileFromOneThatWasInterrupted) {
    struct {
        std::string lines;
        std::size_t records;
        bool isComplete;
        std::uint64_t malformed;
    } const cases[] = {
        {kMatch + kSummary, 1, true, 0},
        {"", 0, false, 0},
        {kMatch, 1, false, 0},
        {kMatch + kSummary.substr(0, kSummary.size() - 1), 1, false, 0}, // cut off before its line feed
        {kMatch + kMatch.substr(0, 20), 1, false, 0},
        {"{\n" + kMatch + "[]\n" + kSummary, 1, true, 2},
        {kMatch + kSummary + kMatch, 1, true, 1}, // nothing comes behind the summary
        {R"({"index":-1,"node":"a","method":"m","outcome":"match"})"
         "\n" +
             kMatch + kSummary,
         1, true, 1},
        {R"({"index":1,"node":"a","method":"m","outcome":"perhaps"})"
         "\n" +
             kSummary,
         0, true, 1},
    };
    for (const auto& each : cases) {
        const Reading reading = read(kHeader + each.lines);
        EXPECT_EQ(reading.records.size(), each.records) << each.lines;
        EXPECT_EQ(reading.isComplete, each.isComplete) << each.lines;
        EXPECT_EQ(reading.malformed, each.malformed) << each.lines;
    }
    EXPECT_EQ(read(kHeader + kMatch + "?\n").firstMalformed.substr(0, 8), "line 3: ");
}

TEST(ResultsReader, ReadsNoFileOfAnotherKindOrOfALaterVersion) {
    for (const std::string text :
         {"", "{}", "[]\n", "{\"format\":\"zent-results\"}\n", "{\"format\":\"other\",\"version\":1}\n",
          "{\"format\":\"zent-results\",\"version\":2}\n", "\x89PNG\r\n\x1a\n"}) {
        std::istringstream in(text);
        EXPECT_THROW(ResultsReader{in}, std::runtime_error) << text;
    }
    std::istringstream later("{\"format\":\"zent-results\",\"version\":2}\n");
    try {
        const ResultsReader reader(later);
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "a results file of version 2; this program reads version 1");
    }
}

TEST(ResultsReader, TakesTheOutputThatIsFurthestOffByWhatTheToleranceIsHeldAgainst) {
    // 10 degrees are 0.17 radians, and less than 0.2.
    const Reading reading = read(
        kHeader +
        R"({"index":7,"node":"n","method":"m","outcome":"mismatch","seconds":0,"statistics":[)"
        R"({"output":"r","unit":"degrees","greatest":10,"count":1,"over":1,"at":[0]},)"
        R"({"output":"t","unit":"value","greatest":0.2,"count":3,"over":2,"notFinite":1,"at":[1,2]},)"
        R"({"output":"s","unit":"value","greatest":null,"count":1,"over":0,"notFinite":1,"at":null,"note":"short"}]})"
        "\n");
    ASSERT_EQ(reading.records.size(), 1U);
    const WorstValue& worst = reading.records[0].worst;
    EXPECT_EQ(worst.output, "t");
    EXPECT_EQ(worst.at, (std::vector<std::uint64_t>{1, 2}));
    EXPECT_EQ(worst.count, 5U);
    EXPECT_EQ(worst.over, 3U);
    EXPECT_EQ(worst.notFinite, 2U);
    EXPECT_EQ(worst.note, "short");
}

TEST(ResultsReader, ReadsLinesLongerThanItsChunksAndWordsForNumbersThatAreNone) {
    const std::string long_(1 << 20, 'x');
    const Reading reading = read(kHeader + R"({"index":0,"node":")" + long_ +
                                 R"(","method":"m","outcome":"mismatch","seconds":"NaN","statistics":[)"
                                 R"({"output":"o","unit":"value","greatest":"Infinity"}]})"
                                 "\n");
    ASSERT_EQ(reading.records.size(), 1U);
    EXPECT_EQ(reading.records[0].node, long_);
    EXPECT_TRUE(std::isnan(reading.records[0].seconds));
    EXPECT_TRUE(std::isinf(reading.records[0].worst.value));
}

} // namespace
} // namespace zent
