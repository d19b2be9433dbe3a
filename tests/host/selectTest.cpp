#include "zent/values/Select.h"
#include "host/openScene.h"
#include "zent/values/Port.h"

#include <nlohmann/json.hpp>

namespace zent::test {
namespace {

constexpr float kHalfTurn = 3.14159265f;

Element element(const std::string& plug) {
    return Element(json(plug));
}

class SelectTest : public OpenScene {};

TEST_F(SelectTest, FindsPlugsByTheirNames) {
    open(R"({"nodes": {
        "|a|b": {"translate": [{"number": 1, "short": "tx", "alias": "left"}, 2, 3], "plain": 4},
        "|z|b": {"plain": 5},
        "same": {"same": 6},
        "n": {"array": {"multi": {
            "3": {"compound": {"child": {"multi": {"0": [7, 8], "1": [9, 10]}}, "weight": 11}},
            "5": {"compound": {"child": {"multi": {"1": [12, 13]}}, "weight": 14}}}},
            "cells": {"multi": {"0": 15, "4": 16}}}}})");
    const std::pair<const char*, float> cases[] = {
        {"|a|b.plain", 4.0f},
        {"a|b.plain", 4.0f},
        {"z|b.plain", 5.0f},
        {"a|b.translate.translateY", 2.0f},
        {"a|b.translateZ", 3.0f}, // a child of a compound is an attribute of its node
        {"a|b.tx", 1.0f},
        {"a|b.left", 1.0f},
        {"same", 6.0f}, // with no ".", the whole text names node and attribute
        {"n.array[3].child[1].childX", 9.0f},
        {"n.array[5].child[1].childY", 13.0f},
        {"n.array[5].weight", 14.0f},
        {"n.cells[4]", 16.0f},
        {"n.cells[4", 16.0f},
        {"n.cells[x]", 15.0f}, // what is no number counts as 0
        {"n.cells[1]", 0.0f},  // an element that was never set
        {"n.cells[-1]", 0.0f},
        {"n.array[4].child[9].childX", 0.0f},
    };
    for (const auto& [name, value] : cases) {
        EXPECT_EQ(element(name).getFloat(), value) << name;
    }
    EXPECT_TRUE(errors.empty());
}

TEST_F(SelectTest, AWrongChildYieldsItsParent) {
    open(R"({"nodes": {"n": {"rotate": [{"angle": 1, "short": "rx", "alias": "roll"}, {"angle": 180}, 2],
                             "list": {"multi": {"2": [3, 4, 5]}}}}})");
    for (const char* child : {"nothing", "rx", "roll", "", "rotate.rx", "nothing.roll"}) {
        EXPECT_EQ(element(std::string("n.rotate.") + child).getVec3().y, kHalfTurn) << child;
    }
    EXPECT_EQ(element("n.list[2].nothing").getVec3(), vec3(3, 4, 5));
    EXPECT_EQ(element("n.list[2].nothing.listZ").getFloat(), 5.0f);
}

// Each of a name's parts may be one that passes over many children.
TEST_F(SelectTest, TakesLongNamesOfWideCompounds) {
    std::string children = R"("last": 7)";
    for (int i = 0; i < 2000; ++i) {
        children.insert(0, "\"c" + std::to_string(i) + "\": 0, ");
    }
    open(R"({"nodes": {"n": {"wide": {"compound": {)" + children + R"(}},
                             "list": {"multi": {"0": {"compound": {)" +
         children + "}}}}}}}");
    std::string name = "n.wide";
    for (int i = 0; i < 20000; ++i) {
        name += ".x" + std::to_string(i);
    }
    EXPECT_EQ(element(name + ".last").getFloat(), 7.0f);
    // Elements that the scene does not list are made, with all that is below them.
    const auto readMany = [] {
        for (int i = 1; i < 1000; ++i) {
            EXPECT_EQ(element("n.list[" + std::to_string(i) + "].last").getFloat(), 0.0f);
        }
    };
    EXPECT_EQ(thrownText(readMany),
              "n.list: there are more than 1048576 plugs of elements that the scene does not list");
}

TEST_F(SelectTest, PutsTheNamespaceBeforeEachLevel) {
    open(R"({"nodes": {"|ns:a|ns:b": {"v": 1, "rotate": [{"angle": 180}, 0, 0]}, "ns:a:c": {"v": 2}, "|a|b": {"v": 3},
                       "c": {"v": 4}, "|ns:top": {"v": 5}, "ns:d": {"message": 6}}})");
    EXPECT_EQ(element("a|b.v").getFloat(), 3.0f);
    EXPECT_EQ(element("c.v").getFloat(), 4.0f);
    EXPECT_EQ(element("ns:a|ns:b.v").getFloat(), 1.0f);
    namescope = "ns";
    const std::pair<const char*, float> cases[] = {{"a|b.v", 1.0f}, {"|a|b.v", 1.0f}, {"b.v", 1.0f},
                                                   {"a:c.v", 2.0f}, {"|top.v", 5.0f}, {"top.v", 5.0f}};
    for (const auto& [name, value] : cases) {
        EXPECT_EQ(element(name).getFloat(), value) << name;
    }
    const std::pair<const char*, const char*> missing[] = {
        {"c.v", "ns:c.v"}, {"|x|y.v", "|ns:x|ns:y.v"}, {"x|y.v", "ns:x|ns:y.v"}, {"", "ns:"}};
    for (const auto& [name, full] : missing) {
        EXPECT_EQ(thrownText([&, plug = name] { element(plug).getFloat(); }),
                  std::string("Cannot find plug \"") + full + "\"");
    }
}

TEST_F(SelectTest, ShowsAndThrowsWhatItCannotFind) {
    open(R"({"nodes": {"|a|twin": {"v": 1}, "|b|twin": {"v": 2}, "n": {"v": 1, "rotate": [1, 2, 3]}}})");
    for (const std::string name : {"none.v", "n.none", "n", "n.", "", ".v", "|n.v", "n.v[0]", "n.rotate[1]",
                                   "n.rotate.rotateX[0]", "twin.v", "c|twin.v", "a||twin.v", "n..v"}) {
        errors.clear();
        const std::string text = "Cannot find plug \"" + name + "\"";
        EXPECT_EQ(thrownText([&] { element(name).getFloat(); }), text);
        EXPECT_EQ(errors, std::vector<std::string>{text});
    }
}

TEST_F(SelectTest, ReadsNumbersInTheNodeFunctionsUnits) {
    open(R"({"nodes": {"n": {
        "half": 2.5, "minus": -2.9, "yes": true, "no": 0, "big": 1e300, "text": "t",
        "degrees": {"angle": 180}, "single": {"angle": 180, "type": 564},
        "radians": {"angle": 0.5, "unit": "radians"}, "minutes": {"angle": 10800, "unit": "minutes"},
        "seconds": {"angle": 648000, "unit": "seconds"},
        "film": {"time": 12}, "pal": {"time": 12.5, "unit": "palFrame"}, "hours": {"time": 2, "unit": "hours"}}}})");
    const std::pair<const char*, float> cases[] = {{"half", 2.5f},         {"yes", 1.0f},     {"degrees", kHalfTurn},
                                                   {"single", kHalfTurn},  {"radians", 0.5f}, {"minutes", kHalfTurn},
                                                   {"seconds", kHalfTurn}, {"film", 12.0f},   {"pal", 12.5f},
                                                   {"hours", 2.0f},        {"text", 0.0f}};
    for (const auto& [name, value] : cases) {
        EXPECT_FLOAT_EQ(element(std::string("n.") + name).getFloat(), value) << name;
    }
    EXPECT_EQ(element("n.half").getInt(), 2);
    EXPECT_EQ(element("n.minus").getInt(), -2);
    EXPECT_EQ(element("n.big").getInt(), std::numeric_limits<int>::max());
    EXPECT_TRUE(element("n.yes").getBool());
    EXPECT_TRUE(element("n.half").getBool());
    EXPECT_FALSE(element("n.no").getBool());
    EXPECT_EQ(element("n.text").getString(), "n.text"); // no plug is read
    EXPECT_STREQ(selectPlug("n.text").asString().asChar(), "t");
}

TEST_F(SelectTest, ReadsVectorsFromChildrenOrFromNumericData) {
    open(R"({"nodes": {"n": {
        "mixed": [{"angle": 180}, {"time": 3, "unit": "hours"}, 0.25, -1],
        "colour": {"compound": {"colourR": 1, "colourG": 2, "colourB": 3}},
        "f2": {"float2": [1.5, 2]}, "d2": {"double2": [0.1, 4]}, "f3": {"float3": [1, 2, 3.5]},
        "d3": {"double3": [0.1, 5, 6]}, "plain": 7}}})");
    EXPECT_EQ(element("n.mixed").getVec2(), vec2(kHalfTurn, 3));
    EXPECT_EQ(element("n.mixed").getVec3(), vec3(kHalfTurn, 3, 0.25f));
    EXPECT_EQ(element("n.mixed").getVec4(), vec4(kHalfTurn, 3, 0.25f, -1));
    EXPECT_EQ(element("n.colour").getVec3(), vec3(1, 2, 3));
    EXPECT_EQ(element("n.f2").getVec2(), vec2(1.5f, 2));
    EXPECT_EQ(element("n.d2").getVec2(), vec2(0.1f, 4));
    EXPECT_EQ(element("n.f3").getVec3(), vec3(1, 2, 3.5f));
    EXPECT_EQ(element("n.d3").getVec3(), vec3(0.1f, 5, 6));
    // What is there neither as a child nor as data is 0.
    EXPECT_EQ(element("n.colour").getVec4(), vec4(1, 2, 3, 0));
    EXPECT_EQ(element("n.plain").getVec3(), vec3(0.0f));
}

TEST_F(SelectTest, ReadsMatricesOfEachForm) {
    const std::string numbers = "[1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 0.1, 15, 16]";
    open(R"({"nodes": {"n": {"plain": {"matrix": )" + numbers + R"(}, "typed": {"matrixData": )" + numbers +
         R"(}, "single": {"floatMatrix": )" + numbers + R"(}, "other": {"floatMatrix": )" + numbers +
         R"(, "type": 667}, "list": {"multi": {"2": {"matrix": )" + numbers + R"(}}}}}})");
    const std::pair<const char*, int> types[] = {{"plain", 574}, {"typed", 570}, {"single", 575}, {"other", 667}};
    for (const auto& [name, type] : types) {
        const std::string plug = std::string("n.") + name;
        EXPECT_EQ(static_cast<int>(selectPlug(plug).attribute().apiType()), type);
        const mat4 matrix = element(plug).getMat4();
        EXPECT_EQ(matrix[0], vec4(1, 2, 3, 4)) << name;
        EXPECT_EQ(matrix[3], vec4(13, 0.1f, 15, 16)) << name;
    }
    EXPECT_EQ(element("n.list[2]").getMat4()[1], vec4(5, 6, 7, 8));
    EXPECT_EQ(element("n.list[0]").getMat4(), mat4(1.0f));
}

TEST_F(SelectTest, NarrowsArrays) {
    MDoubleArray doubles(1, 0.1);
    MPointArray points(1, MPoint(2, 4, 6, 2));
    EXPECT_EQ(maya::std(doubles), std::vector<float>{0.1f});
    EXPECT_EQ(maya::std(MFloatArray(2, 0.5f)), (std::vector<float>{0.5f, 0.5f}));
    EXPECT_EQ(maya::std(MIntArray(1, -3)), std::vector<int>{-3});
    EXPECT_EQ(maya::pointsToStd(points), std::vector<vec3>{vec3(2, 4, 6)}); // w is dropped, not divided by
    EXPECT_EQ(maya::pointsToStd(MFloatPointArray(1, MFloatPoint(2, 4, 6, 2))), std::vector<vec3>{vec3(2, 4, 6)});
}

} // namespace
} // namespace zent::test
