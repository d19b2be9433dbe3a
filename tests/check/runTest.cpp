#include "check/testRun.h"

#include "zent/proxies/ProxyDeformer.h"

#include <cmath>
#include <cstdio>
#include <filesystem>

namespace zent::test {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kGood = R"({"node_name": "n", "method": "addDoubleLinear",
    "results": [{"attribute": 0, "value": 5}], "arguments": [{"attribute": 0, "value": 2}, {"attribute": 1, "value": 3}]})";
constexpr const char* kBad = R"({"node_name": "n", "method": "addDoubleLinear",
    "results": [{"attribute": 0, "value": 6}], "arguments": [{"attribute": 0, "value": 2}, {"attribute": 1, "value": 3}]})";

/// Two lists of points, Maya's and the node function's, compared one by one.
class PointList : public ProxyDeformer<Mesh> {
public:
    PointList(std::vector<vec3> maya, std::vector<vec3> zent) {
        output.points = std::move(maya);
        input.points = std::move(zent);
    }
    json closure(const Arguments& /*args*/, const std::vector<Port>& /*ports*/) const override { return cursor; }
    std::string name() const override { return "points"; }
    void init(const Arguments& /*args*/, const std::vector<Port>& /*ports*/) override { cursor = 0; }
    void deform(Mesh& /*shape*/, unsigned int /*index*/) const override {}
};

class SpineTest : public RunTest {
protected:
    void SetUp() override {
        RunTest::SetUp();
        add(makeProxy("addDoubleLinear"));
    }
    std::string list(const Lines& records) {
        std::string text = "[";
        for (const std::string& record : records) {
            text += (text.size() > 1 ? "," : "") + record;
        }
        return text + "]";
    }
};

TEST_F(SpineTest, LogsInTheStatedOrder) {
    settings.verbose = 1;
    settings.stopOnFirstError = false;
    EXPECT_FALSE(check(list({kBad})));
    EXPECT_EQ(lines,
              (Lines{"====== start running n(addDoubleLinear) =====",
                     R"(closure: {"method":"addDoubleLinear","node":"addDoubleLinear",)"
                     R"("outputs":[{"name":"output","type":"Float","value":6.0}]})",
                     R"(maya output: [{"name":"output","type":"Float","value":6.0}])",
                     R"(zent output: [{"type":"Float","value":5.0}])",
                     "===== unmatch on n(addDoubleLinear) =====", "====== end running n(addDoubleLinear) ====="}));
}

TEST_F(SpineTest, StopsAtTheFirstMismatchBeforeTheWarning) {
    const std::string unknown = R"({"node_name": "u", "method": "unknown"})";
    EXPECT_FALSE(check(list({unknown, kBad, "17"})));
    EXPECT_EQ(lines.back(), "===== unmatch on n(addDoubleLinear) =====");
    EXPECT_TRUE(warnings.empty());
}

TEST_F(SpineTest, WarnsOfIgnoredMethodsOnceEachInOrder) {
    add(std::make_unique<PointList>(std::vector<vec3>{vec3(0.0f)}, std::vector<vec3>{vec3(9.0f)}));
    const std::string b = R"({"node_name": "b", "method": "b"})";
    const std::string a = R"({"node_name": "a", "method": "a"})";
    EXPECT_TRUE(check(list({b, a, b, kGood, R"({"node_name": "d", "method": "points"})"})));
    EXPECT_EQ(warnings, (Lines{"ignored methods(3): [a,b,points]"}));
    EXPECT_TRUE(lines.empty());
}

TEST_F(SpineTest, PassesOverAndSkips) {
    settings.verbose = 1;
    settings.skip = {"addDoubleLinear", "worldVisibility"};
    const std::string malformed = R"({"node_name": "m", "method": "addDoubleLinear", "results": [{}]})";
    EXPECT_TRUE(check(list({R"({"node_name": "w", "method": "worldVisibility", "results": [1]})", malformed})));
    EXPECT_EQ(lines,
              (Lines{"====== start running m(addDoubleLinear) =====", "====== end running m(addDoubleLinear) ====="}));
}

TEST_F(SpineTest, WalksWhateverTheManifestIs) {
    EXPECT_TRUE(check("[]"));
    EXPECT_TRUE(check("null"));
    EXPECT_FALSE(check(std::string(R"({"b": )") + kGood + R"(, "a": )" + kBad + "}"));
    for (const char* manifest :
         {"3", "[3]", R"([{"method": "worldVisibility"}])", R"([{"node_name": "n"}])", "[null]"}) {
        lines.clear();
        EXPECT_THROW(check(manifest), json::type_error) << manifest;
        EXPECT_TRUE(lines.empty()) << manifest;
    }
}

TEST_F(SpineTest, EndsTheRunOnAnyExceptionOfARecord) {
    settings.stopOnFirstError = false;
    const std::pair<const char*, const char*> cases[] = {
        {R"("results": [{"value": 1}])", "[json.exception.out_of_range.403] key 'attribute' not found"},
        {R"("results": [{"attribute": 1e20, "value": 1}])",
         "results: number 1e+20 is beyond an unsigned 32-bit integer"},
        {R"("results": [{"attribute": 7, "indices": [-1.5], "value": 1}])",
         "results, attribute 7: number -1.5 is beyond an unsigned 32-bit integer"},
    };
    for (const auto& [entries, text] : cases) {
        lines.clear();
        const std::string record = std::string(R"({"node_name": "n", "method": "addDoubleLinear", )") + entries + "}";
        EXPECT_THROW(check(list({record, kBad})), std::exception);
        EXPECT_EQ(lines, (Lines{std::string("error on checking n(addDoubleLinear): ") + text})) << entries;
    }
    // Entries are read before the method is looked up.
    EXPECT_THROW(check(R"([{"node_name": "n", "method": "unknown", "results": [{}]}])"), std::exception);
}

TEST_F(SpineTest, FilesEntriesByAttributeAndPrefersTheName) {
    add(std::make_unique<PointList>(std::vector<vec3>{}, std::vector<vec3>{}));
    EXPECT_TRUE(check(R"([{"node_name": "n", "method": "addDoubleLinear",
        "results": {"x": {"attribute": 0, "name": 5.0, "value": "no plug"}, "y": {"attribute": 4000000000, "value": 1}},
        "arguments": [{"attribute": 65536, "value": "no plug"}, {"attribute": 1, "value": true}, {"attribute": 0, "value": 4, "indices": [1, 2]}]}])"));
}

class DeformerLoopTest : public SpineTest {
protected:
    bool checkPoints(std::vector<vec3> maya, std::vector<vec3> zent) {
        settings.ignoreDeformer = false;
        add(std::make_unique<PointList>(std::move(maya), std::move(zent)));
        lines.clear();
        return check(R"([{"node_name": "d", "method": "points"}])");
    }
};

TEST_F(DeformerLoopTest, ReportsTheWorstPointAndTheEarlierOnATie) {
    const vec3 far(0.0f, 3.0f, 4.0f);
    EXPECT_FALSE(checkPoints({vec3(1.0f), far, vec3(0.0f), far}, {vec3(0.0f), vec3(0.0f), far, vec3(0.0f)}));
    EXPECT_EQ(lines,
              (Lines{"error index: 1", "closure: 1",
                     R"(maya output: [{"name":"outputGeometry[0]","type":"Vertex","value":[0.0,3.0,4.0]}])",
                     R"(zent output: [{"type":"Vertex","value":[0.0,0.0,0.0]}])", "===== unmatch on d(points) ====="}));
}

TEST_F(DeformerLoopTest, LogsAClosureForEachPointAtVerboseTwo) {
    settings.verbose = 2;
    EXPECT_TRUE(checkPoints({vec3(1.0f), vec3(2.0f)}, {vec3(1.0f), vec3(2.0f)}));
    EXPECT_EQ(lines[1], "Closure on vtx[0]: 0");
    EXPECT_EQ(lines[2], "Closure on vtx[1]: 1");
}

// Only a strictly positive distance is a failure of the record.
TEST_F(DeformerLoopTest, PassesPointsThatDifferAtNoDistance) {
    settings.epsilon = 0.0f;
    EXPECT_TRUE(checkPoints({vec3(1.0f)}, {vec3(1.0f)}));
    settings.epsilon = 0.001f;
    EXPECT_TRUE(checkPoints({vec3(NAN, 0.0f, 0.0f)}, {vec3(0.0f)}));
}

TEST(LogTest, OpensItsFileAtTheFirstLineAndTruncatesIt) {
    const std::string directory = testing::TempDir();
    const std::string path = directory + "/ZentCheckLog.txt";
    std::remove(path.c_str());
    Log::init(directory, "ZentCheckLog");
    EXPECT_FALSE(std::filesystem::exists(path));
    Log::println("a long line");
    EXPECT_EQ(std::filesystem::file_size(path), 12U);
    Log::init(directory, "ZentCheckLog");
    EXPECT_EQ(std::filesystem::file_size(path), 12U);
    Log::println("line");
    EXPECT_EQ(std::filesystem::file_size(path), 5U);
    Log::close();
}

TEST(LogTest, NamesTheFileThatCannotBeCreated) {
    const auto textOf = [](const std::function<void()>& run) -> std::string {
        try {
            run();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return {};
    };
    Log::close();
    EXPECT_EQ(textOf([] { Log::println("x"); }), "failed on creating log file ");
    Log::init("/no/such/directory", "a name that strftime leaves alone but is long");
    EXPECT_EQ(textOf([] { Log::println("x"); }), "failed on creating log file /no/such/directory/.txt");
    Log::close();
    EXPECT_EQ(Log::getTime("%Y").size(), 4U);
}

} // namespace
} // namespace zent::test
