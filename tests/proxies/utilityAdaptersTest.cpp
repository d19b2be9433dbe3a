#include "proxies/adapters.h"

#include "zent/values/Compare.h"

#include <gtest/gtest.h>

#include <string>

namespace zent::test {
namespace {

struct Row {
    const char* method;
    const char* arguments; // a list of ports
    const char* plug;      // the name of Maya's output
    const char* type;
    const char* value;
};

class Adapters : public testing::TestWithParam<Row> {};

std::string nameOf(const testing::TestParamInfo<Row>& info) {
    return info.param.method + std::string("_") + std::to_string(info.index);
}

TEST_P(Adapters, BindTheirNode) {
    const Row& row = GetParam();
    const json value = json::parse(row.value), type = row.type;
    const Proxy& proxy = adapter(row.method);

    const json zent = proxy.zentResult(argumentsOf(json::parse(row.arguments)));
    EXPECT_TRUE(compare(json::array({{{"value", value}, {"type", type}}}), zent, 2e-6f)) << zent;
    EXPECT_FALSE(zent.at(0).contains("name"));

    const bool isList = row.type[std::string(row.type).size() - 1] == ']';
    const json maya = proxy.mayaResult(portsOf(json::array({isList ? value : json::array({value})})));
    EXPECT_TRUE(compare(maya, zent, 2e-6f)) << maya;
    EXPECT_EQ(maya.at(0).at("name"), row.plug);
    EXPECT_FALSE(proxy.isDeformer());
}

// Each argument weighs differently, so that two in each other's place are seen. Angles stay radians on both sides.
INSTANTIATE_TEST_SUITE_P(
    Utility, Adapters,
    testing::Values(
        Row{"addDoubleLinear", "[[1.5], [2]]", "output", "Float", "3.5"},
        Row{"multDoubleLinear", "[[1.5], [2]]", "output", "Float", "3"},
        Row{"reverse", "[[0.25]]", "outputX", "Float", "0.75"},
        Row{"clamp", "[[9], [1], [5]]", "outputR", "Float", "5"},
        Row{"blendColors", "[[[1, 2, 3]], [[5, 6, 7]], [0.25]]", "output", "Vec3", "[4, 5, 6]"},
        Row{"blendTwoAttr", "[[1, 5], [0.25]]", "output", "Float", "2"},
        Row{"blendTwoAttr", "[[3], [0.25]]", "output", "Float", "3"},
        Row{"blendWeighted",
            R"([[{"indices": [0], "value": 1}, {"indices": [3], "value": 5}], [{"indices": [0], "value": 2}]])",
            "output", "Float", "7"},
        Row{"condition1D", "[[2], [1], [7], [8], [2]]", "outColorR", "Float", "7"},
        Row{"condition3D", "[[2], [1], [[7, 7, 7]], [[8, 9, 10]], [4]]", "outColor", "Vec3", "[8, 9, 10]"},
        Row{"multiplyDivide1D", "[[6], [4], [2]]", "outputX", "Float", "1.5"},
        Row{"multiplyDivide3D", "[[[6, 5, 4]], [[2, 4, 8]], [2]]", "output", "Vec3", "[3, 1.25, 0.5]"},
        Row{"plusMinusAverage1D", "[[9, 2, 3], [2]]", "output1D", "Float", "4"},
        Row{"plusMinusAverage2D", "[[[9, 1], [2, 2]], [2]]", "output2D", "Vec2", "[7, -1, 99]"},
        Row{"plusMinusAverage3D", "[[[9, 1, 0], [2, 2, 2]], [2]]", "output3D", "Vec3", "[7, -1, -2]"},
        Row{"setRange1D", "[[3], [2], [6], [10], [50]]", "outValueX", "Float", "20"},
        Row{"setRange3D", "[[[3, 3, 3]], [[2, 1, 3]], [[6, 5, 7]], [[10, 10, 10]], [[50, 50, 50]]]", "outValue", "Vec3",
            "[20, 30, 10]"},
        Row{"unitConversion1D", "[[3], [-2]]", "output", "Float", "-6"},
        Row{"unitConversion3D", "[[[3, 2, 1]], [2]]", "output", "Vec3", "[6, 4, 2]"},
        Row{"distanceBetweenTwoPoints", "[[[1, 2, 3]], [[3, 5, 9]]]", "distance", "Float", "7"},
        Row{"distanceDimShape", "[[[1, 2, 3]], [[3, 5, 9]]]", "distance", "Float", "7"},
        Row{"distanceBetweenTwoMatrices",
            "[[[2,0,0,0, 0,2,0,0, 0,0,2,0, 1,2,3,1]], [[1,0,0,0, 0,1,0,0, 0,0,1,0, 3,5,9,1]]]", "distance", "Float",
            "7"},
        Row{"angleBetween__COMPUTE__angle", "[[[1, 0, 0]], [[0, 2, 0]]]", "angle", "Float", "1.5707963"},
        Row{"angleBetween__COMPUTE__axis", "[[[1, 0, 0]], [[0, 2, 0]]]", "axis", "Vec3", "[0, 0, 1]"},
        Row{"inverseMatrix", "[[[2,0,0,0, 0,4,0,0, 0,0,1,0, 6,8,9,1]]]", "inverseMatrix", "Mat4",
            "[0.5,0,0,0, 0,0.25,0,0, 0,0,1,0, -3,-2,-9,1]"},
        Row{"inverseLocal", "[[[2,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]]]", "inverseMatrix", "Mat4",
            "[0.5,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]"},
        Row{"inverseWorld", "[[[2,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]]]", "inverseMatrix", "Mat4",
            "[0.5,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]"},
        Row{"multMatrix", "[[[1,0,0,0, 0,1,0,0, 0,0,1,0, 1,1,1,1], [2,0,0,0, 0,3,0,0, 0,0,4,0, 0,0,0,1]]]", "matrixSum",
            "Mat4", "[2,0,0,0, 0,3,0,0, 0,0,4,0, 2,3,4,1]"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Animation, Adapters,
    testing::Values(
        // The slopes of t^3 between 1 and 3, the line beyond, and handles of a third whose step types stand on idle
        // sides.
        Row{"animCurve", "[[1.5], [1, 3], [1, 27], [1, 1], [5, 27], [1, 1], [1, 2], [3, 8], [1, 1], [0], [1], [false]]",
            "output", "Float", "3.375"},
        Row{"animCurve", "[[5], [1, 3], [1, 27], [1, 1], [5, 27], [1, 1], [1, 2], [3, 8], [1, 1], [0], [1], [false]]",
            "output", "Float", "35"},
        Row{"animCurve", "[[2], [1, 3], [0, 1], [1, 1], [9, 5], [17, 1], [1, 2], [3, 8], [1, 5], [1], [0], [true]]",
            "output", "Float", "0.25"},
        Row{"remapValue", "[[3], [2], [6], [10], [20], [0, 0.5, 1], [0, 1, 0.5], [1, 1, 1]]", "outValue", "Float",
            "15"},
        Row{"combinationShape", "[[0.5, 0.25, 4], [1]]", "outputWeight", "Float", "0.25"},
        Row{"weightDriverPoses",
            R"([[7.5], [8.5], [3, 4], [{"indices": [0, 0], "value": 9}, {"indices": [0, 1], "value": 4},
                {"indices": [0, 0], "value": 3}], [{"indices": [0, 0, 5], "value": 2}]])",
            "output", "Float[]", "[2]"},
        // The driver turns about x and the reader about z, as the pose does; twist is ignored.
        Row{"weightDriverDrivers",
            R"([[7], [8], [0], [false], [[1,0,0,0, 0,0,1,0, 0,-1,0,0, 0,0,0,1]], [[0,1,0,0, -1,0,0,0, 0,0,1,0, 0,0,0,1]],
                [[0,1,0,0, -1,0,0,0, 0,0,1,0, 0,0,0,1]], [[1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]], [1], [[0,0,0]]])",
            "output", "Float[]", "[1]"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Transform, Adapters,
    testing::Values(
        // A quarter turn about z takes x to y; the rotate pivot (1, 0, 0) stays where it is, but for the translations.
        Row{"transform",
            "[[[10, 0, 0]], [[0, 0, 1.5707963]], [0], [[2, 1, 1]], [[0.5, 0, 0]], [[1, 0, 0]], [[0, 0, 3]], [[0, 20, "
            "0]],"
            " [[0, 0, 7]]]",
            "matrix", "Mat4", "[0,2,0,0, -1,0.5,0,0, 0,0,1,0, 11,19,7,1]"},
        Row{"joint", "[[[1, 2, 3]], [[0, 0, 1.5707963]], [[2, 1, 1]], [0], [[1.5707963, 0, 0]], [[1, 4, 0.5]], [true]]",
            "matrix", "Mat4", "[0,0,4,0, -1,0,0,0, 0,-0.25,0,0, 1,2,3,1]"},
        Row{"worldMatrix", "[[[2,0,0,0, 0,3,0,0, 0,0,4,0, 0,0,0,1]], [[1,0,0,0, 0,1,0,0, 0,0,1,0, 1,1,1,1]]]",
            "worldMatrix[0]", "Mat4", "[2,0,0,0, 0,3,0,0, 0,0,4,0, 2,3,4,1]"},
        Row{"locatorWorldPosition", "[[[1, 1, 1]], [[2,0,0,0, 0,3,0,0, 0,0,4,0, 5,6,7,1]]]", "worldPosition[0]", "Vec3",
            "[7, 9, 11]"},
        Row{"pairBlendRotate", "[[[0.1, 0.2, 0.3]], [[0.5, 0.6, 0.7]], [0.25], [0]]", "outRotate", "Euler",
            "[0.2, 0.3, 0.4]"},
        Row{"pairBlendTranslate", "[[[1, 2, 3]], [[5, 6, 7]], [0.25], [1], [2], [0]]", "outTranslate", "Vec3",
            "[1, 6, 4]"},
        Row{"composeMatrix", "[[[1, 2, 3]], [[0, 0, 1.5707963]], [0], [[2, 1, 1]]]", "outputMatrix", "Mat4",
            "[0,2,0,0, -1,0,0,0, 0,0,1,0, 1,2,3,1]"},
        Row{"decomposeMatrixTranslate", "[[[1,0,0,0, 0,1,0,0, 0,0,1,0, 5,6,7,1]]]", "outputTranslate", "Vec3",
            "[5, 6, 7]"},
        Row{"decomposeMatrixRotate", "[[[0,1,0,0, -1,0,0,0, 0,0,1,0, 5,6,7,1]]]", "outputRotate", "Euler",
            "[0, 0, 1.5707963]"},
        Row{"decomposeMatrixScale", "[[[2,0,0,0, 2,4,0,0, 0,0,-3,0, 5,6,7,1]]]", "outputScale", "Vec3", "[2, 4, -3]"},
        Row{"decomposeMatrixShear", "[[[2,0,0,0, 2,4,0,0, 3,6,3,0, 5,6,7,1]]]", "outputShear", "Vec3", "[0.5, 1, 2]"},
        Row{"decomposeMatrixQuat", "[[[0,1,0,0, -1,0,0,0, 0,0,1,0, 5,6,7,1]]]", "outputQuat", "Vec4",
            "[0, 0, 0.70710678, 0.70710678]"},
        Row{"quatToEuler", "[[[0, 0, 3, 3]]]", "outputRotate", "Euler", "[0, 0, 1.5707963]"}),
    nameOf);

TEST(AdapterClosures, TellTheInputs) {
    EXPECT_EQ(adapter("condition1D").closure(argumentsOf(json::parse("[[1], [2], [3], [4], [5]]")), {}),
              json::parse(R"({
        "node": "condition", "inputs": [
            {"name": "firstTerm", "type": "Float", "value": 1.0}, {"name": "secondTerm", "type": "Float", "value": 2.0},
            {"name": "colorIfTrueR", "type": "Float", "value": 3.0},
            {"name": "colorIfFalseR", "type": "Float", "value": 4.0},
            {"name": "operation", "type": "Int", "value": 5}]})"));
    EXPECT_EQ(adapter("multiplyDivide1D").closure(argumentsOf(json::parse("[[1], [2], [3]]")), {}), json::parse(R"({
        "node": "multiplyDivide", "inputs": [
            {"name": "input1X", "type": "Float", "value": 1.0}, {"name": "input2X", "type": "Float", "value": 2.0},
            {"name": "operation", "type": "Int", "value": 3}]})"));

    const json report =
        adapter("transform")
            .closure(argumentsOf(json::parse(
                         "[[[0, 1, 2]], [[1, 1, 2]], [3], [[3, 1, 2]], [[4, 1, 2]], [[5, 1, 2]], [[6, 1, 2]],"
                         "[[7, 1, 2]], [[8, 1, 2]]]")),
                     {});
    EXPECT_FALSE(report.contains("node"));
    const char* const kInputs[] = {"translate Vec3",
                                   "rotate Euler",
                                   "rotateOrder Int",
                                   "scale Vec3",
                                   "shear Vec3",
                                   "rotatePivot Vec3",
                                   "scalePivot Vec3",
                                   "rotatePivotTranslate Vec3",
                                   "scalePivotTranslate Vec3"};
    ASSERT_EQ(report.at("inputs").size(), 9u);
    for (std::size_t i = 0; i < 9; ++i) {
        const json& input = report["inputs"][i];
        EXPECT_EQ(input.at("name").get<std::string>() + " " + input.at("type").get<std::string>(), kInputs[i]);
        EXPECT_EQ(input.at("value"), i == 2 ? json(3) : json({i, 1, 2}));
    }
}

} // namespace
} // namespace zent::test
