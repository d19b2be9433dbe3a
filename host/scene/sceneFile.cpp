#include "scene/sceneFile.h"

#include "scene/attributeForms.h"
#include "scene/GeometryReader.h"
#include "scene/plugPath.h"
#include "scene/readNodes.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace scene {

namespace {

std::vector<char> readFile(const std::string& path) {
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open() || std::filesystem::is_directory(path, ignored)) {
        throw std::runtime_error("cannot open file");
    }
    std::vector<char> bytes;
    if (const std::uintmax_t size = std::filesystem::file_size(path, ignored); !ignored) {
        bytes.resize(size);
        file.read(bytes.data(), static_cast<std::streamsize>(size));
        bytes.resize(static_cast<std::size_t>(file.gcount()));
    }
    std::array<char, 4096> chunk{}; // for what has no size, such as a pipe, or has grown
    while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0) {
        bytes.insert(bytes.end(), chunk.data(), chunk.data() + file.gcount());
    }
    return bytes;
}

void readTime(const Json& value, GeometryReader& geometry, Scene& scene) {
    Node owner;
    owner.name = "scene";
    Slot slot;
    slot.node = &owner;
    slot.name = "time";
    readAttribute(scene, geometry, slot, value);
    if (slot.kind == Slot::Kind::number) {
        scene.setTime(MTime(slot.number, MTime::kFilm));
    } else if (slot.kind == Slot::Kind::time) {
        scene.setTime(MTime(slot.number, static_cast<MTime::Unit>(slot.unit)));
    } else {
        throw std::runtime_error("\"time\" should be a number, or a time with its unit");
    }
}

void readSelection(const Json& names, Scene& scene) {
    std::vector<const Node*> nodes;
    for (const Json& name : names) {
        const Node* node = name.is_string() ? scene.findNode(name.get_ref<const std::string&>()) : nullptr;
        if (!names.is_array() || node == nullptr) {
            throw std::runtime_error(
                fmt::format("\"selected\" should be a list of nodes' names; there is no one node {}",
                            name.dump(-1, ' ', false, Json::error_handler_t::replace)));
        }
        nodes.push_back(node);
    }
    scene.select(std::move(nodes));
}

/// Without a time of its own, a scene has that of its first node of type "time".
void takeTimeOfNodes(Scene& scene) {
    for (std::size_t i = 0; i < scene.nodeCount(); ++i) {
        const Node& node = scene.node(i);
        const Slot* clock = node.typeName == "time" ? node.attribute("outTime") : nullptr;
        if (clock != nullptr && clock->kind == Slot::Kind::time) {
            return scene.setTime(MTime(clock->number, static_cast<MTime::Unit>(clock->unit)));
        }
    }
}

void readConnections(const Json& connections, Scene& scene) {
    if (!connections.is_array()) {
        throw std::runtime_error("\"connections\" should be a list");
    }
    for (std::size_t i = 0; i < connections.size(); ++i) {
        const Json& pair = connections[i];
        if (!pair.is_array() || pair.size() != 2 || !pair[0].is_string() || !pair[1].is_string()) {
            throw std::runtime_error(fmt::format("connection {}: should be [\"source\", \"destination\"]", i));
        }
        try {
            scene.connect(plugAt(scene, pair[0].get_ref<const std::string&>()),
                          plugAt(scene, pair[1].get_ref<const std::string&>()));
        } catch (const std::exception& error) {
            throw std::runtime_error(fmt::format("connection {}: {}", i, error.what()));
        }
    }
    if (const Slot* slot = scene.cycle()) {
        throw std::runtime_error("plug " + fullName(*slot) + " feeds itself over its connections");
    }
}

void readScene(const std::string& path, GeometryReader& geometry, Scene& scene) {
    const Json file = readNodes(readFile(path), std::filesystem::path(path).parent_path(), geometry, scene);
    if (!file.is_object()) {
        throw std::runtime_error("should be an object with \"nodes\" and \"connections\"");
    }
    takeTimeOfNodes(scene);
    for (const auto& [key, value] : members(file)) {
        if (key == "connections") {
            readConnections(value, scene);
        } else if (key == "time") {
            readTime(value, geometry, scene);
        } else if (key == "selected") {
            readSelection(value, scene);
        } else if (key == kResourceKey) {
            if (!value.is_string()) {
                throw std::runtime_error(kResourceForm);
            }
        } else if (key != "nodes") {
            throw std::runtime_error(fmt::format("has no use for \"{}\"", key));
        } else if (!value.is_object()) {
            throw std::runtime_error(kNodesForm);
        } else if (!value.empty()) { // what was not read as a node
            throw std::runtime_error(
                fmt::format("{}: should be an object of attributes by their names", members(value).front().first));
        }
    }
}

} // namespace

void readSceneFile(const std::string& path, const std::string& resource, Scene& scene) {
    try {
        GeometryReader geometry(resource);
        readScene(path, geometry, scene);
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("scene {}: {}", path, error.what()));
    }
}

} // namespace scene
