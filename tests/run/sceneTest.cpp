#include "run/zentcheck.h"

#include <gtest/gtest.h>

namespace zent::test {
namespace {

const char* const kScene = R"({"nodes": {
    "|rig:top|rig:arm": {"translate": [1, 2, 3], "rotate": [{"angle": 90}, 0, 0]},
    "rig:add": {"input1": 0, "output": 5.5}, "rig:sum": {"value": 4}},
    "connections": [["rig:sum.value", "rig:add.input1"]]})";

std::string record(const std::string& result, const std::string& argument) {
    return R"([{"node_name": "add", "method": "addDoubleLinear", "results": [{"attribute": 0, "name": ")" + result +
           R"("}], "arguments": [{"attribute": 0, "name": ")" + argument + R"("}, {"attribute": 1, "value": 1.5}]}])";
}

TEST(SceneRunTest, ReadsPlugsUnderANamespace) {
    const std::string scene = "--scene " + writeFile("scene.json", kScene);
    const std::string manifest = writeFile("good.json", record("add.output", "add.input1"));
    Outcome outcome = zentcheck(scene + " --namespace rig " + manifest);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out + outcome.err, "");
    EXPECT_EQ(zentcheck(scene + " " + writeFile("full.json", record("rig:add.output", "rig:sum.value"))).status, 0);
    EXPECT_EQ(zentcheck(scene + " --namespace rig " + writeFile("arm.json", record("add.output", "top|arm.translateX")))
                  .status,
              1); // 1 and 1.5 are not 5.5
}

TEST(SceneRunTest, APlugThatIsMissingIsToldTwice) {
    const Outcome outcome = zentcheck("--namespace rig --scene " + writeFile("scene.json", kScene) + " " +
                                      writeFile("missing.json", record("|top|leg.v", "add.input1")));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "error on checking add(addDoubleLinear): Cannot find plug \"|rig:top|rig:leg.v\"\n");
    EXPECT_EQ(outcome.err, "error: Cannot find plug \"|rig:top|rig:leg.v\"\nerror: std::exception\n");
}

TEST(SceneRunTest, FailsOnASceneThatDoesNotOpen) {
    const std::string manifest = writeFile("empty.json", "[]");
    const std::string broken = writeFile("broken.json", R"({"nodes": {"n": {"rotate": {"angle": "90"}}}})");
    Outcome outcome = zentcheck("--scene " + broken + " " + manifest);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "error: scene " + broken + ": n.rotate: \"angle\" should be a number, not string\n");
    outcome = zentcheck("--scene /no/such/scene.json " + manifest);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "error: scene /no/such/scene.json: cannot open file\n");
    EXPECT_EQ(zentcheck("--scene / " + manifest).err, "error: scene /: cannot open file\n");
    EXPECT_EQ(zentcheck("--plugin /no/such/plugin.so " + manifest).status, 2);
}

} // namespace
} // namespace zent::test
