#include "zent/methods/NodeTable.h"
#include "zent/proxies/Registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace zent {
namespace {

/// How many entries a source makes, as a type says it: "" for one, "[]" for a list, "{}" and "{}{}" for a map.
std::string shapeOf(const Source& source) {
    std::string shape;
    for (std::size_t at = source.text.find('['); at != std::string::npos; at = source.text.find('[', at + 1)) {
        const char index = source.text[at + 1];
        shape += index == '#' || index == '>' ? "{}" : index == 'g' || index == '0' || index == '.' ? "" : "[]";
    }
    return shape.empty() && (source.walk == "chain" || source.walk == "rest") ? "[]" : shape;
}

/// The same of a type; one joint's lists are lists of one.
std::string shapeOf(const ValueInfo& value, const Source& source) {
    const std::string shape = value.type.substr(std::min(value.type.find_first_of("[{"), value.type.size()));
    return source.walk == "root" && shape == "[]" ? "" : shape;
}

/// The table goes by hand, the adapters by the signatures of node functions: each place must fit.
TEST(NodeTable, AgreesWithTheAdapters) {
    std::map<std::string, MethodInfo> methods;
    for (const MethodInfo& method : methodInfos()) {
        methods[method.name] = method;
    }
    std::map<std::string, int> rows;
    const auto expectFits = [](const NodeRow& row, const char* list, const std::vector<Source>& sources,
                               const std::vector<ValueInfo>& values) {
        ASSERT_EQ(sources.size(), values.size()) << row.method << " " << list;
        for (std::size_t i = 0; i < sources.size(); ++i) {
            if (sources[i].kind == Source::Kind::plug) {
                EXPECT_EQ(shapeOf(sources[i]), shapeOf(values[i], sources[i]))
                    << row.method << " " << list << " " << i << " " << sources[i].text;
            }
        }
    };
    for (const NodeRow& row : nodeTable()) {
        ASSERT_EQ(methods.count(row.method), 1U) << row.method;
        const MethodInfo& method = methods[row.method];
        expectFits(row, "results", row.results, method.results);
        expectFits(row, "arguments", row.arguments, method.arguments);
        ++rows[row.method];
    }
    EXPECT_EQ(rows.size(), methods.size());
    EXPECT_EQ(rows["clamp"], 3);
    EXPECT_EQ(rows["inverseMatrix"], 2);
}

TEST(NodeTable, TellsTypesAndAsksForPlugs) {
    EXPECT_EQ(nodeTypesInWords("addDoubleLinear"), "addDoubleLinear, addDL ?");
    EXPECT_EQ(nodeTypesInWords("deformBendMesh"), "nonLinear (deformBend)");
    const std::vector<AskedPlug> plugs = askedPlugs();
    const auto find = [&plugs](const char* type, const char* plug) {
        return std::find_if(plugs.begin(), plugs.end(),
                            [&](const AskedPlug& asked) { return asked.type == type && asked.plug == plug; });
    };
    for (const auto& [type, plug] : {std::pair("clamp", "outputB"),
                                     {"ikEffector", "translate"},
                                     {"joint", "jointOrient"},
                                     {"deformBend", "curvature"},
                                     {"skinCluster", "weightList[0].weights[0]"},
                                     {"blendShape", "inputTarget[0].baseWeights[0]"},
                                     {"transform", "scalePivot"}}) {
        ASSERT_NE(find(type, plug), plugs.end()) << type << "." << plug;
        EXPECT_FALSE(find(type, plug)->isDoubtful) << type << "." << plug;
    }
    EXPECT_TRUE(find("weightDriver", "twistAxis")->isDoubtful);
    EXPECT_TRUE(find("addDL", "input1")->isDoubtful);
    for (const AskedPlug& asked : plugs) {
        EXPECT_EQ(asked.plug.find_first_of("?*#^=<>{} "), std::string::npos) << asked.type << "." << asked.plug;
    }
}

} // namespace
} // namespace zent
