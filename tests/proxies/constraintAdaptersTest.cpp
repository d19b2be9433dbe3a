#include "proxies/adapters.h"

#include <regex>

namespace zent::test {
namespace {

/// A list of ports; I stands for the identity, Q for a quarter turn about z, LINE for a curve from the origin to (3, 4,
/// 0).
json portsText(std::string text) {
    text = std::regex_replace(text, std::regex("I\\b"), "[1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]");
    text = std::regex_replace(text, std::regex("Q"), "[0,1,0,0, -1,0,0,0, 0,0,1,0, 0,0,0,1]");
    return json::parse(std::regex_replace(text, std::regex("LINE"), R"({"id": 0})"));
}

// Each argument weighs differently, so that two in each other's place are seen. Maya's values are radians.
TEST(ConstraintAdapters, BindTheirNodes) {
    ResourceWriter writer;
    writer.add(Curve(1, kFormOpen, {{0, 0, 0}, {3, 4, 0}}, {0, 1}, mat4(1.0f)));
    loadBlocksOf(writer);
    const char* rows[][5] = {
        // method, plug and type, Maya's ports, arguments
        {"pointConstraint", "constraintTranslate", "Vec3", "[[[6, 5, 3]]]",
         "[[I],[[1,0,0]],[[0,2,0]],[[0,0,3]],[1,3],[[9,9,9]],[I,I],[[4,0,0],[8,0,0]],[[0,4,0],[0,8,0]]]"},
        {"scaleConstraint", "constraintScale", "Vec3", "[[[7, 14, 21]]]",
         "[[I],[false],[[1,2,3]],[1,3],[[9,9,9]],[I,I],[[4,4,4],[8,8,8]]]"},
        {"poleVectorConstraint", "constraintTranslate", "Vec3", "[[[-5, 2, 0]]]",
         "[[Q],[[1,0,0]],[I],[I],[[3,0,0]],[[0,5,0]]]"},
        {"orientConstraint", "constraintRotate", "Euler", "[[[0, 0, 0.8]]]",
         "[[I],[0],[[0,0,0.2]],[[0,0,0.1]],[1],[1,1],[[9,9,9]],[I,I],[[0,0,0.4],[0,0,0.8]],[0,0],[[0,0,0.3],[0,0,0.3]]"
         "]"},
        {"parentConstraintRotate", "constraintRotate", "Euler", "[[[0, 0, 0.75]]]",
         "[[I],[0],[[0,0,0.2]],[1],[1],[[9,9,9]],[I],[[0,0,0.6]],[[0,0,0.05]],[0],[[0,0,0.3]]]"},
        {"parentConstraintTranslate", "constraintTranslate", "Vec3", "[[[3, -1.25, 6]]]",
         "[[I],[[1,0,0]],[[0,2,0]],[1],[[9,9,9]],[I],[[4,0,0]],[[0,1,0]],[[0,0,6]],[[0,0,0]],[0],[[1,3,1]],[[1,2,1]],"
         "[true],[[0,0,0]]]"},
        {"aimConstraint", "constraintRotate", "Euler", "[[[0, 0, 1.4707963]]]",
         "[[I],[[1,0,0]],[[0,1,0]],[[0,0,1]],[0],[[0,0,0.2]],[[0,0,0.1]],[1],[[9,9,9]],[I],[[1,2,0]],[[0,0,1]],[3],[I],"
         "[[0,0,1]],[[1,0,0]],[[0,0,1]]]"},
        {"tangentConstraint", "constraintRotate", "Euler", "[[[0, 0, 0.92729522]]]",
         "[[I],[0],[[0,1,0]],[LINE],[[1,0,0]],[[0,0,1]],[3],[I],[[0,0,1]]]"},
        {"motionPath", "allCoordinates", "Vec3", "[[[1.5, 2, 0]]]", "[[LINE],[0.5],[true]]"},
        {"ikRPsolver", "rotate", "Vec3[]", "[[[0, 0, 1.5707963]]]",
         "[[I],[[0,5,0]],[[2,0,0]],[[0,0,0]],[0],[I],[[0,0,0]],[[7,7,7]],[[0,0,0]],[0],[[1,1,1]],[[1,1,1]],[true]]"},
        {"ikSCsolver", "rotate", "Vec3[]", "[[[0, 0, 1.5707963]]]",
         "[[I],[[0,5,0]],[[2,0,0]],[[0,0,1.5707963]],[0],[I],[[0,0,0]],[[0,0,0]],[0],[[1,1,1]],[[1,1,1]],[true]]"},
        {"ikSplineSolver", "rotate", "Euler[]", "[[[0, 0, 0.92729522], [0, 0, 0]], [[0, -1, 0]]]",
         "[[LINE],[false],[false],[0],[0],[0],[[0,1,0]],[[0,1,0]],[I],[I],[0],[[2,0,0]],[0],"
         "[[1,0,0,0, 0,1,0,0, 0,0,1,0, 0,1,0,1]],[[0,0,0],[0,0,0]],[[1,0,0]],[0,0],[[1,1,1],[1,1,1]],[[1,1,1],[1,1,1]],"
         "[true,true]]"},
    };
    for (const auto& [method, plug, type, ports, arguments] : rows) {
        std::vector<std::string> plugs{plug};
        if (std::string(method) == "ikSplineSolver") {
            plugs.emplace_back("translate");
        }
        expectBinding(method, plugs, type, portsText(ports), portsText(arguments), 1e-5f);
        const json zent = adapter(method).zentResult(argumentsOf(portsText(arguments)));
        if (std::string(type).rfind("Euler", 0) == 0) { // degrees on both sides
            const json& angles = zent.at(0).at("value");
            EXPECT_GT((angles.at(0).is_array() ? angles.at(0) : angles).at(2).get<double>(), 40);
        }
    }
    const json orient = adapter("orientConstraint").closure(argumentsOf(portsText(rows[3][4])), {});
    EXPECT_EQ(orient.at("node"), "orientConstraint");
    EXPECT_EQ(orient.at("inputs").size(), 11u);
    EXPECT_EQ(orient.at("inputs").at(3).at("name"), "offset");
    const json parent = adapter("parentConstraintRotate").closure(argumentsOf(portsText(rows[4][4])), {});
    EXPECT_EQ(parent.at("node"), "parentConstraint");
    EXPECT_EQ(parent.at("inputs").at(8), json::parse(R"({"name": "target[{}].targetOffsetRotate", "type": "Euler[]",
                                                         "value": [[0, 0, 0.05000000074505806]]})"));
}

} // namespace
} // namespace zent::test
