#include "host/openScene.h"
#include "zent/values/Port.h"
#include "zent/values/ResourceWriter.h"
#include "zent/values/Select.h"

#include <maya/MFnAnimCurve.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <fstream>
#include <sstream>

namespace zent::test {
namespace {

std::vector<std::string> examplesIn(const std::string& path) {
    std::ifstream file(path);
    std::stringstream content;
    content << file.rdbuf();
    const std::string text = content.str();
    const std::string start = "```json\n";
    std::vector<std::string> examples;
    for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start, at + 1)) {
        const std::size_t begin = at + start.size();
        examples.push_back(text.substr(begin, text.find("```", begin) - begin));
    }
    return examples;
}

class DocsTest : public OpenScene {};

TEST_F(DocsTest, TheExamplesOfSceneFilesOpen) {
    ResourceWriter writer;
    writer.add(Mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, mat4(1.0f)));
    const std::string resource = temporaryPath("body.bin");
    writer.write(resource);
    const std::vector<std::string> examples = examplesIn(std::string(ZENT_SOURCE_DIR) + "/docs/scene-file.md");
    ASSERT_EQ(examples.size(), 5U);
    const auto number = [](const char* plug) { return Element(json(plug)).getFloat(); };

    open(examples[0]);
    EXPECT_EQ(number("add.input1"), 1.0f);
    open(examples[1]);
    EXPECT_EQ(number("kinds.target[3].item[6000].itemY"), 2.0f);
    EXPECT_EQ(number("kinds.loudness"), 2.5f);
    open(examples[2], resource);
    EXPECT_EQ(Element(json("follicle.inputMesh")).get<Mesh>().translation, vec3(0, 10, 0));
    EXPECT_EQ(Element(json("bodyShape.outMesh")).get<Mesh>().points.size(), 3U);
    open(examples[3]);
    const MFnAnimCurve wave(selectPlug("wave.output").node());
    double x = 0.0;
    double y = 0.0;
    ASSERT_EQ(wave.numKeys(), 3U);
    EXPECT_TRUE(wave.getTangent(1, x, y, true) && x == 12.0 && y == 0.0);
    EXPECT_TRUE(wave.getTangent(0, x, y, false) && x == 12.0 && std::abs(y - 90.0) < 1e-12);
    EXPECT_TRUE(wave.getTangent(2, x, y, false) && x == 12.0 && y == 0.0);
    EXPECT_FALSE(wave.getTangent(3, x, y, false));
    EXPECT_EQ(wave.outTangentType(1), MFnAnimCurve::kTangentAuto);
    EXPECT_EQ(wave.inTangentType(0), MFnAnimCurve::kTangentFixed);
    EXPECT_EQ(wave.time(1).value(), 12.0);
    EXPECT_EQ(wave.value(2), 0.0);
    EXPECT_TRUE(wave.isTimeInput() && !wave.isWeighted() && wave.postInfinityType() == MFnAnimCurve::kCycle);
    open(examples[4]);
    EXPECT_EQ(number("time1.outTime"), 12.0f);
    EXPECT_EQ(number("arm.type"), 3.0f);
}

} // namespace
} // namespace zent::test
