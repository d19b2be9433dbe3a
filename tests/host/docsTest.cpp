#include "host/openScene.h"
#include "tools/ResourceWriter.h"
#include "zent/values/Port.h"

#include <nlohmann/json.hpp>

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
    ASSERT_EQ(examples.size(), 4U);
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
    EXPECT_EQ(number("time1.outTime"), 12.0f);
    EXPECT_EQ(number("arm.type"), 3.0f);
}

} // namespace
} // namespace zent::test
