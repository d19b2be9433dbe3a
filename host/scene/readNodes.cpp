#include "scene/readNodes.h"

#include "maya/Scene.h"
#include "scene/attributeForms.h"
#include "zent/check/PlainReader.h"

#include <fmt/format.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace scene {

namespace {

/// Values are read by recursion, and so are the plugs that they make.
constexpr std::size_t kMaxDepth = 1000;

// A node's type and an attribute of that name are told apart by a ".", which no attribute's name has.
constexpr const char* kTypeKey = "type";
constexpr const char* kTypeAttribute = ".type";

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

/// Is told the text piece by piece, by the JSON library or by `readPlainMembers`.
class NodeReader : public nlohmann::json_sax<Json> {
public:
    NodeReader(std::filesystem::path folder, GeometryReader& geometry, Scene& scene)
        : folder_(std::move(folder)), geometry_(geometry), scene_(scene) {}

    Json take() { return std::move(root_); }

    /// Takes a value at once, as if all that it is made of came one by one.
    void take(Json&& value) {
        if (open_.size() == kTop && isInNodes() && value.is_array()) {
            throw std::runtime_error(kNodesForm);
        }
        if (open_.size() == kNodes && isInNodes() && value.is_object()) {
            readNode(path_, value, geometry_, scene_);
            open_.back()->get_ref<Json::object_t&>().pop_back();
        } else if (value.is_string()) {
            string(value.get_ref<std::string&>());
        } else {
            add(std::move(value));
        }
    }
    bool areNodesNext() const { return open_.size() == kTop && isInNodes(); }

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

/// Of a text that `passPlain` has passed over, a piece.
Json takePiece(const char*& at, const char* end) {
    Json value;
    if (zent::takePlain<true>(at, end, value) != zent::Read::whole) {
        throw std::runtime_error("cannot be read"); // it would be read for ever
    }
    return value;
}

/// The members of the file, or those of its nodes.
void readPlainMembers(const char*& at, const char* end, NodeReader& reader) {
    reader.start_object(0);
    at = zent::passSpace(at + 1, end);
    while (*at != '}') {
        Json name = takePiece(at, end);
        reader.key(name.get_ref<std::string&>());
        at = zent::passSpace(zent::passSpace(at, end) + 1, end); // the colon
        if (*at == '{' && reader.areNodesNext()) {
            readPlainMembers(at, end, reader);
        } else {
            reader.take(takePiece(at, end));
        }
        at = zent::passSpace(at, end);
        at = *at == ',' ? zent::passSpace(at + 1, end) : at;
    }
    ++at;
    reader.end_object();
}

} // namespace

Json readNodes(const std::vector<char>& text, std::filesystem::path folder, GeometryReader& geometry, Scene& scene) {
    NodeReader reader(std::move(folder), geometry, scene);
    const char* const end = text.data() + text.size();
    const char* const begin = zent::passSpace(text.data(), end);
    const char* at = begin;
    // Plain JSON is read here, several times as fast as by the library, which has all else, and tells what is wrong.
    if (at != end && *at == '{' && zent::passPlain(at, end) == zent::Read::whole && zent::passSpace(at, end) == end) {
        at = begin;
        readPlainMembers(at, end, reader);
    } else {
        Json::sax_parse(text, &reader);
    }
    return reader.take();
}

} // namespace scene
