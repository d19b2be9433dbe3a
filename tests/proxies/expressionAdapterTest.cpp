#include "adapters.h"

#include "tools/Disassemble.h"
#include "zent/expression/Assembly.h"
#include "zent/values/Compare.h"
#include "zent/values/resource.h"
#include "zent/values/ResourceWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zent {
namespace {

class ExpressionAdapter : public testing::Test {
protected:
    void SetUp() override {
        const Program program = assemble("input 0\n const 2.5\n mul\n output 0\n input 1\n output 1\n end");
        ResourceWriter writer;
        writer.add(program.constants);
        writer.add(program.code);
        writer.write(path);
    }

    const std::string path = testing::TempDir() + "expressionAdapter.bin";
};

TEST_F(ExpressionAdapter, RunsTheCodeOfAResourceFileOnTheInputs) {
    Element::storage().load(path);
    const Proxy& proxy = test::adapter("expression");
    const Arguments args = test::argumentsOf({{4.0, 0.5}, {{{"id", 1}}}, {{{"id", 0}}}});
    const json zent = proxy.zentResult(args);
    EXPECT_EQ(zent, json::parse(R"([{"type": "Float[]", "value": [10.0, 0.5]}])"));

    const json maya = proxy.mayaResult(test::portsOf({{10.0, 0.5}}));
    EXPECT_EQ(maya, json::parse(R"([{"name": "output", "type": "Float[]", "value": [10.0, 0.5]}])"));
    EXPECT_TRUE(compare(maya, zent, 1e-5f));
    // The code may write more outputs than the node has connected, not fewer.
    EXPECT_TRUE(compare(proxy.mayaResult(test::portsOf({{10.0}})), zent, 1e-5f));
    EXPECT_FALSE(compare(proxy.mayaResult(test::portsOf({{10.0, 0.5, 0.0}})), zent, 1e-5f));
}

TEST_F(ExpressionAdapter, TheCodeIsDisassembledFromAResourceFile) {
    std::ostringstream bare;
    disassemble(path, 1, std::nullopt, bare);
    EXPECT_NE(bare.str().find("    2: const [0]\n"), std::string::npos) << bare.str();
    std::ostringstream withConstants;
    disassemble(path, 1, 0, withConstants);
    EXPECT_NE(withConstants.str().find("    2: const [0]         # 2.5\n"), std::string::npos) << withConstants.str();
    EXPECT_THROW(disassemble(path, 2, std::nullopt, bare), std::runtime_error);
    EXPECT_THROW(disassemble(path, 1, 1, bare), std::runtime_error);
    EXPECT_THROW(disassemble(path + ".none", 1, std::nullopt, bare), std::runtime_error);
}

} // namespace
} // namespace zent
