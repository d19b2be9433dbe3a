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
#include <utility>
#include <vector>

namespace scene {

namespace {

/// Values are read by recursion, and so are the plugs that they make.
constexpr std::size_t kMaxDepth = 1000;

// A node's type and an attribute of that name are told apart by a ".", which no attribute's name has.
constexpr const char* kTypeKey = "type";
constexpr const char* kTypeAttribute = ".type";

constexpr const char* kResourceKey = "resource";
constexpr const char* kResourceForm =
    "\"resource\" should be the name of a file beside the scene, and stand before \"nodes\"";
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

/// Reads each node as soon as its text ends, so that no more than one is in memory. What is left over is all but the
/// nodes.
class NodeReader : public nlohmann::json_sax<Json> {
public:
    NodeReader(std::filesystem::path folder, GeometryReader& geometry, Scene& scene)
        : folder_(std::move(folder)), geometry_(geometry), scene_(scene) {}

    Json take() { return std::move(root_); }

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t&) override { return add(value); }
    bool binary(binary_t&) override { return false; } // no text has one
    bool string(string_t& value) override {
        if (open_.size() == kTop && topKey_ == kResourceKey) {
            geometry_.setFile(besideScene(value));
        }
        return add(std::move(value));
    }
    bool start_object(std::size_t) override {
        open(Json::value_t::object);
        return true;
    }
    bool start_array(std::size_t) override {
        if (open_.size() == kTop && isInNodes()) {
            throw std::runtime_error(kNodesForm);
        }
        open(Json::value_t::array);
        return true;
    }
    bool key(string_t& name) override {
        requireShallow();
        if (open_.size() == kTop) {
            topKey_ = name;
            hasNodes_ = hasNodes_ || isInNodes();
        } else if (open_.size() == kNodes && isInNodes()) {
            path_ = name;
        }
        member_ = &open_.back()->get_ref<Json::object_t&>()[name];
        return true;
    }
    bool end_object() override {
        const Json& ended = *open_.back();
        open_.pop_back();
        if (open_.size() == kNodes && isInNodes()) {
            readNode(path_, ended, geometry_, scene_);
            if (Json& nodes = *open_.back(); nodes.is_object()) {
                nodes.get_ref<Json::object_t&>().pop_back();
            }
        }
        return true;
    }
    bool end_array() override {
        open_.pop_back();
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) override {
        throw std::runtime_error(error.what());
    }

private:
    static constexpr std::size_t kTop = 1; // how many are open where the file's own keys stand
    static constexpr std::size_t kNodes = 2;

    bool isInNodes() const { return topKey_ == "nodes"; }

    void requireShallow() const {
        if (open_.size() > kMaxDepth) {
            throw std::runtime_error(fmt::format("{}{}values nest more than {} levels deep", isInNodes() ? path_ : "",
                                                 isInNodes() ? ": " : "", kMaxDepth));
        }
    }

    Json& place(Json value) {
        requireShallow();
        Json* at = &root_;
        if (!open_.empty() && open_.back()->is_array()) {
            open_.back()->push_back(nullptr);
            at = &open_.back()->back();
        } else if (!open_.empty()) {
            at = member_;
        }
        *at = std::move(value);
        return *at;
    }
    bool add(Json value) {
        place(std::move(value));
        return true;
    }
    void open(Json::value_t type) { open_.push_back(&place(Json(type))); }

    std::string besideScene(const std::string& name) const {
        const std::filesystem::path file(name);
        if (file.filename() != file || name == "." || name == ".." || hasNodes_) {
            throw std::runtime_error(kResourceForm);
        }
        return (folder_ / file).string();
    }

    const std::filesystem::path folder_;
    GeometryReader& geometry_;
    Scene& scene_;
    Json root_;
    std::vector<Json*> open_; ///< the objects and lists around the next value
    Json* member_ = nullptr;  ///< of the last one, if that is an object
    std::string topKey_;
    std::string path_; ///< of the node
    bool hasNodes_ = false;
};

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
    NodeReader reader(std::filesystem::path(path).parent_path(), geometry, scene);
    Json::sax_parse(readFile(path), &reader);
    const Json file = reader.take();
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
