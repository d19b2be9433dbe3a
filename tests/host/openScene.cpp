#include "host/openScene.h"

#include "maya/Display.h"
#include "scene/sceneFile.h"
#include "zent/values/Select.h"

#include <filesystem>
#include <fstream>

namespace zent::test {

OpenScene::OpenScene() {
    host::setDisplay({{}, {}, [this](const std::string& text) { errors.push_back(text); }});
}

OpenScene::~OpenScene() {
    host::setDisplay({});
    scene::Scene::current().clear();
    namescope.clear();
}

void OpenScene::open(const std::string& text, const std::string& resource) {
    const std::string path = temporaryPath("scene.json");
    std::ofstream(path) << text;
    scene::Scene::current().clear();
    scene::readSceneFile(path, resource, scene::Scene::current());
}

std::string OpenScene::whyNot(const std::string& text) {
    const std::string reason = thrownText([&] { open(text); });
    // The JSON library passes over the mark; without it, plain text is read in another way.
    const std::string byLibrary = thrownText([&] { open("\xEF\xBB\xBF" + text); });
    const bool isSyntax = reason.find("parse error") != std::string::npos; // the mark moves its place
    EXPECT_TRUE(isSyntax || reason == byLibrary) << text << "\n  " << reason << "\n  " << byLibrary;
    return reason;
}

std::string temporaryPath(const std::string& name) {
    return testing::TempDir() + name;
}

} // namespace zent::test
