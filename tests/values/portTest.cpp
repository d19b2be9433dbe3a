#include "zent/values/Port.h"

#include "zent/values/Log.h"

#include <gtest/gtest.h>

#include <functional>

namespace zent::test {
namespace {

Element element(const char* text, std::vector<unsigned int> indices = {}) {
    return Element(json::parse(text), std::move(indices));
}

Port port(std::initializer_list<const char*> texts) {
    Port result;
    for (const char* text : texts) {
        result.add(element(text));
    }
    return result;
}

std::string textOf(const std::function<void()>& run) {
    try {
        run();
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

TEST(ElementTest, ConvertsLiterals) {
    EXPECT_EQ(element("true").getInt(), 1);
    EXPECT_EQ(element("false").getFloat(), 0.0f);
    EXPECT_EQ(element("2.9").getInt(), 2);
    EXPECT_EQ(element("-2.9").getInt(), -2);
    EXPECT_EQ(element("[1, 2.5, 3, 4]").getVec3(), vec3(1.0f, 2.5f, 3.0f));
    const mat4 matrix = element("[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15]").getMat4();
    EXPECT_EQ(matrix[3], vec4(12.0f, 13.0f, 14.0f, 15.0f));
    EXPECT_EQ(matrix[0][1], 1.0f);
}

TEST(ElementTest, RefusesOtherTypesInTheLibrarysWords) {
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[] { element("1").getString(); }, "not a string"},
        {[] { element("{}").getInt(); }, "[json.exception.type_error.302] type must be number, but is object"},
        {[] { element("null").getVec3(); },
         "[json.exception.type_error.305] cannot use operator[] with a numeric argument with null"},
        {[] { element("[1]").getMat4(); }, "array of 16 numbers expected, got 1"},
        {[] { element("\"p\"").get<WeightMap>(); }, "[json.exception.type_error.304] cannot use at() with string"},
        {[] { element("1").getDagPath(); }, "no attached dag"},
    };
    for (const auto& [run, text] : cases) {
        EXPECT_EQ(textOf(run), text);
    }
}

TEST(PortTest, CastsOnlyASingleElement) {
    std::vector<std::string> lines;
    Log::setCustomPrintln([&](const std::string& line) { lines.push_back(line); });
    EXPECT_EQ(port({"4"}).castSingle().getInt(), 4);
    EXPECT_EQ(textOf([] { port({}).castSingle(); }), "not single");
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(textOf([] { port({"\"a.b\"", "\"c.d\""}).castSingle(); }), "not single");
    EXPECT_EQ(lines, (std::vector<std::string>{"Element: a.b", "Element: c.d"}));
    EXPECT_EQ(textOf([] { port({"1", "2"}).castSingle(); }), "not a string");
    Log::close();
}

TEST(PortTest, CollectsListsArraysAndMaps) {
    EXPECT_EQ((port({"1", "2"}).getUIntVector<9>()), (svec<unsigned int, 9>{1, 2}));
    EXPECT_EQ((port({"1", "2"}).getFloatVectorFixed<2>().size()), 2U);
    EXPECT_EQ(textOf([] { port({"[1,2]", "[1,2]", "[1,2]"}).getVec2Array<4>(); }), "size should be 4 not 3");
    EXPECT_EQ(textOf([] { port({"1", "2", "3"}).getFloatVectorFixed<2>(); }), "size should be at most 2 not 3");

    Port map;
    map.add(element("1.5", {7, 3}));
    map.add(element("2.5", {2}));
    map.add(element("3.5", {7}));
    EXPECT_EQ(map.getFloatMap(), (std::map<unsigned int, float>{{2, 2.5f}, {7, 3.5f}}));
    map.add(element("1"));
    EXPECT_EQ(textOf([&] { map.getFloatMap(); }), "entry needs 1 logical indices, its \"indices\" hold 0");
}

TEST(PortTest, ArgumentsBeyondTheEndAreEmpty) {
    Arguments args;
    args.add(3, element("1"));
    EXPECT_TRUE(args.get(0).elements().empty());
    EXPECT_EQ(args.get(3).elements().size(), 1U);
    EXPECT_TRUE(args.get(4).elements().empty());
}

} // namespace
} // namespace zent::test
