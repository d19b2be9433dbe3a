#include "scene/sceneFile.h"

#include "scene/attributeForms.h"
#include "scene/GeometryReader.h"
#include "scene/plugPath.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace scene {

namespace {

/// Values are read by recursion, and so are the plugs that they make.
constexpr int kMaxDepth = 1000;

// A node's type and an attribute of that name are told apart by a ".", which no attribute's name has.
constexpr const char* kTypeKey = "type";
constexpr const char* kTypeAttribute = ".type";

constexpr const char* kNodesForm = "\"nodes\" should be an object of nodes by their names";

std::vector<char> readFile(const std::string& path) {
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open() || std::filesystem::is_directory(path, ignored)) {
        throw std::runtime_error("cannot open file");
    }
    std::vector<char> bytes;
    if (const std::uintmax_t size = std::filesystem::file_size(path, ignored); !ignored) {
        bytes.reserve(size);
    }
    std::array<char, 1U << 16> chunk{};
    while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0) {
        bytes.insert(bytes.end(), chunk.data(), chunk.data() + file.gcount());
    }
    return bytes;
}

void readNode(const std::string& path, const Json& attributes, GeometryReader& geometry, Scene& scene) {
    Node& node = scene.addNode(path);
    requireDistinctNames(
        attributes, [&path] { return path; }, kTypeAttribute);
    const Slot* type = nullptr;
    for (const auto& [name, value] : members(attributes)) {
        if (name == kTypeKey && value.is_string()) {
            node.typeName = value.get_ref<const std::string&>();
            continue;
        }
        const bool isType = name == kTypeKey || name == kTypeAttribute;
        if (isType && type != nullptr) {
            throw std::runtime_error(fmt::format("{}: there are two \"{}\"", path, kTypeKey));
        }
        Slot& slot = scene.addAttribute(node, isType ? kTypeKey : name);
        type = isType ? &slot : type;
        readAttribute(scene, geometry, slot, value);
    }
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

/// Parses the file, and reads each node as soon as its text ends, so that no more than one is in memory. What is left
/// over is all but the nodes.
Json readNodes(const std::vector<char>& text, GeometryReader& geometry, Scene& scene) {
    constexpr int kTop = 1; // the depth of the file's own keys
    constexpr int kNode = 2;
    bool isInNodes = false;
    std::string path;
    return Json::parse(text, [&](int depth, Json::parse_event_t event, Json& value) {
        if (depth > kMaxDepth) {
            throw std::runtime_error(fmt::format("{}{}values nest more than {} levels deep", isInNodes ? path : "",
                                                 isInNodes ? ": " : "", kMaxDepth));
        }
        if (event == Json::parse_event_t::key && depth == kTop) {
            isInNodes = value == "nodes";
        } else if (event == Json::parse_event_t::key && depth == kNode && isInNodes) {
            path = value.get_ref<const std::string&>();
        } else if (event == Json::parse_event_t::array_start && depth == kTop && isInNodes) {
            throw std::runtime_error(kNodesForm);
        } else if (event == Json::parse_event_t::object_end && depth == kNode && isInNodes) {
            readNode(path, value, geometry, scene);
            return false;
        }
        return true;
    });
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

void readScene(const std::vector<char>& text, GeometryReader& geometry, Scene& scene) {
    const Json file = readNodes(text, geometry, scene);
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
        readScene(readFile(path), geometry, scene);
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("scene {}: {}", path, error.what()));
    }
}

} // namespace scene
