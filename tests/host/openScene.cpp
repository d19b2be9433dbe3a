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
    return thrownText([&] { open(text); });
}

std::string temporaryPath(const std::string& name) {
    return testing::TempDir() + name;
}

} // namespace zent::test
