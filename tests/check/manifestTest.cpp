#include "zent/check/readManifest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace zent {
namespace {

/// A stream that does not tell where it is, as a pipe.
class Pipe : public std::stringbuf {
public:
    explicit Pipe(const std::string& text) : std::stringbuf(text) {}

protected:
    pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override { return pos_type(-1); }
    pos_type seekpos(pos_type, std::ios_base::openmode) override { return pos_type(-1); }
};

/// The records of a text, or the error: as the library reads all of it, and as a manifest does.
std::string byLibrary(const std::string& text) {
    try {
        std::string all;
        for (const json& record : json::parse(text)) {
            all += record.dump() + "\n";
        }
        return all;
    } catch (const json::exception& error) {
        return error.what();
    }
}

std::string byManifest(std::istream& stream, std::size_t chunk) {
    try {
        Manifest manifest(stream, chunk);
        const std::size_t size = manifest.size();
        std::string all;
        std::size_t count = 0;
        manifest.forEach([&](json&& record) {
            all += record.dump() + "\n";
            ++count;
            return true;
        });
        EXPECT_EQ(count, size);
        return all;
    } catch (const json::exception& error) {
        return error.what();
    }
}

TEST(ManifestTest, ReadsWhatTheLibraryReads) {
    const std::string deep = std::string(70, '[') + "{\"a\":1}" + std::string(70, ']');
    for (const std::string text :
         {R"([{"node_name": "a", "value": [1, -2, 0.5, -0, 1e5, 1.5E-7, true, false, null, {}, []]}, 3, "x"])",
          R"([])",
          " [ ] ",
          R"([ [ ] , { } ])",
          R"({"a": 1, "b": [2]})",
          "7",
          "\"text\"",
          "",
          " ",
          "[",
          "[1",
          "[1,",
          "[1,]",
          "[,1]",
          "[1 2]",
          "[1]]",
          "[1] x",
          "[01]",
          "[-]",
          "[1.]",
          "[.5]",
          "[1e]",
          "[1e+]",
          "[+1]",
          "[1e999]",
          "[1e-999]",
          "[123456789012345678901234567890, 18446744073709551615, -9223372036854775808, -9223372036854775809]",
          "[4e-324, 2.2250738585072011e-308, 0.1, 1e23, 9007199254740993]",
          "[tru]",
          "[nul",
          "[truex]",
          "[NaN]",
          "[Infinity]",
          R"([{"a":1,"a":{"b":2},"a":[3]}])",
          R"([{"a" 1}])",
          R"([{"a":1,}])",
          R"([{1:1}])",
          R"([{"a":1])",
          R"([{"a"}])",
          R"(["\"\\\/\b\f\n\r\t", "\u0041\u00e9\ud83d\ude00"])",
          R"(["\ud83d"])",
          R"(["\x"])",
          "[\"a",
          "[\"a\\",
          "[\"\t\"]",
          "[\"\xC3\xA9\", {\"\xE2\x82\xAC\": \"}]\xF0\x9F\x98\x80\"}]",
          "[\"\xC3\"]",
          "[\"\xED\xA0\x80\"]",
          "[\"\xFF\"]",
          "\xEF\xBB\xBF[1, 2]",
          "\xEF\xBB[1]",
          "\xEF\xBB\xBF{\"a\": 1}",
          "[1]\n\t\r ",
          "[{\"a\":1}\n,\n{\"b\":2}}\n]"}) {
        for (const std::size_t chunk : {2, 3, 7, 64, 65536}) {
            std::istringstream file(text);
            EXPECT_EQ(byManifest(file, chunk), byLibrary(text)) << text << " by " << chunk;
            Pipe pipe(text);
            std::istream stream(&pipe);
            EXPECT_EQ(byManifest(stream, chunk), byLibrary(text)) << text << " of a pipe, by " << chunk;
        }
    }
    std::istringstream file(deep);
    EXPECT_EQ(byManifest(file, 16), byLibrary(deep));
    for (const std::string& text :
         {std::string("[1]\0x", 5), std::string("[1\0]", 4), std::string("[\"\xC3\xA9\"\0]", 7)}) {
        std::istringstream zero(text);
        EXPECT_EQ(byManifest(zero, 16), byLibrary(text)) << text;
    }
}

TEST(ManifestTest, ReadsStretches) {
    constexpr std::size_t kRecords = 100001; // beyond what each has a mark of its own
    std::string text = "[";
    for (std::size_t i = 0; i < kRecords; ++i) {
        text += (i == 0 ? "" : ",\n ") + std::to_string(i);
    }
    std::istringstream file(text + "]");
    Manifest manifest(file);
    ASSERT_EQ(manifest.size(), kRecords);
    const std::size_t step = manifest.step();
    EXPECT_GT(step, 1U);
    for (const std::size_t first : {std::size_t{0}, 9 * step, (kRecords - 1) / step * step, step}) {
        std::size_t next = first;
        const std::size_t count = std::min(2 * step, kRecords - first);
        manifest.forEach(first, count, [&](json&& record) {
            EXPECT_EQ(record, next++);
            return true;
        });
        EXPECT_EQ(next, first + count);
    }
}

TEST(ManifestTest, TellsOfAFileThatChanges) {
    for (const char* changed : {"[1, 2", "[1  2]", "[1, x]", ""}) {
        std::stringstream file("[1, 2]");
        Manifest manifest(file, 2);
        file.str(changed);
        EXPECT_THROW(manifest.forEach([](json&&) { return true; }), std::exception) << changed;
    }
}

} // namespace
} // namespace zent
