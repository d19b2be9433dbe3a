#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/rig/buildGraph.h"
#include "zent/rig/Rig.h"
#include "zent/values/Element.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <mutex>
#include <stdexcept>

namespace zent::rig {

namespace {

/// The stand-in's scene as long as a rig is made of it.
class OpenScene {
public:
    OpenScene(const std::string& file, const std::string& resource, const std::string& nameSpace) {
        scene::Scene::current().clear();
        namescope = nameSpace;
        scene::readSceneFile(file, resource, scene::Scene::current());
    }
    OpenScene(const OpenScene&) = delete;
    OpenScene& operator=(const OpenScene&) = delete;
    ~OpenScene() {
        scene::Scene::current().clear();
        namescope.clear();
    }
};

void requireFile(const std::string& path) {
    if (!std::ifstream(path).is_open()) {
        throw std::runtime_error("cannot open file " + path);
    }
}

} // namespace

Rig Rig::load(const std::string& manifest, const std::string& resource, const std::string& scene,
              const std::string& nameSpace) {
    static std::mutex onlyOne; // there is one open scene
    const std::lock_guard<std::mutex> lock(onlyOne);
    requireFile(manifest);
    std::ifstream file(manifest);
    json records;
    try {
        records = json::parse(file);
    } catch (const json::exception& error) {
        throw std::runtime_error("manifest " + manifest + ": " + error.what());
    }
    if (!resource.empty()) {
        requireFile(resource);
        try {
            Element::storage().load(resource);
        } catch (const std::length_error& error) { // of a table that the file cannot hold
            throw std::runtime_error("resource " + resource + ": " + error.what());
        }
    }
    const OpenScene open(scene, resource, nameSpace);
    return Rig(buildGraph(std::move(records)));
}

} // namespace zent::rig
