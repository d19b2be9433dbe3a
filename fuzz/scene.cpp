// Any scene file and resource file, in this order, make a scene or a std::runtime_error, and each plug of that scene
// can be read as each type, under each name that a manifest could give it.
#include "support/input.h"

#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <exception>

namespace {

enum Part { kScene, kResource, kParts };

constexpr std::size_t kMostLetters = 8000; // of all names that are read

class Names {
public:
    explicit Names(const nlohmann::json& file) {
        const auto nodes = file.find("nodes");
        for (const auto& [node, attributes] : nodes->items()) {
            add(node);
            for (const auto& [name, value] : attributes.items()) {
                addPlug(node + ".", name, value);
                if (const std::size_t bar = node.rfind('|'); bar != std::string::npos) {
                    add(node.substr(bar + 1) + "." + name);
                }
            }
        }
    }
    const std::vector<std::string>& list() const { return list_; }

private:
    void add(const std::string& name) {
        letters_ += name.size();
        if (!isFull()) {
            list_.push_back(name);
        }
    }
    void addPlug(const std::string& parent, const std::string& name, const nlohmann::json& value) {
        const std::string plug = parent + name;
        add(plug);
        if (isFull()) {
            return;
        }
        if (value.is_array()) {
            for (std::size_t i = 0; i < value.size(); ++i) {
                addPlug(plug + ".", name + "XYZW"[i % 4], value[i]);
            }
        }
        for (const char* key : {"short", "alias"}) {
            if (value.is_object() && value.contains(key)) {
                add(parent + value[key].get<std::string>());
            }
        }
        if (value.is_object() && value.contains("compound")) {
            for (const auto& [child, item] : value["compound"].items()) {
                addPlug(plug + ".", child, item);
            }
        }
        if (value.is_object() && value.contains("multi")) {
            addPlug(plug, "[7]", nullptr); // mostly one that the scene does not list
            for (const auto& [index, item] : value["multi"].items()) {
                addPlug(plug, "[" + index + "]", item);
            }
        }
    }

    bool isFull() const { return letters_ > kMostLetters; }

    std::vector<std::string> list_;
    std::size_t letters_ = 0;
};

template <class Read>
void allowed(Read&& read) {
    try {
        read();
    } catch (const std::exception&) {
    }
}

void readAsEachType(const std::string& name) {
    const zent::Element element{zent::json(name)};
    allowed([&] { element.getFloat(); });
    allowed([&] { element.getInt(); });
    allowed([&] { element.getBool(); });
    allowed([&] { element.getVec2(); });
    allowed([&] { element.getVec3(); });
    allowed([&] { element.getVec4(); });
    allowed([&] { element.getMat4(); });
    allowed([&] { element.getDagPath(); });
    allowed([&] { element.get<zent::Mesh>(); });
    allowed([&] { element.get<zent::Curve>(); });
    allowed([&] { element.get<zent::Surface>(); });
    allowed([&] { element.get<zent::Lattice>(); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::MemoryFile files[kParts];
    const std::vector<std::string> contents = fuzz::split(data, size, kParts);
    if (fuzz::isMostlyMissing(contents[kResource])) {
        return 0;
    }
    bool isOpen = false;
    try {
        scene::readSceneFile(files[kScene].write(contents[kScene]), files[kResource].write(contents[kResource]),
                             scene::Scene::current());
        isOpen = true;
    } catch (const std::runtime_error&) {
    }
    if (const nlohmann::json file = nlohmann::json::parse(contents[kScene], nullptr, false);
        isOpen && file.contains("nodes")) {
        const Names names(file);
        for (const std::string& name : names.list()) {
            readAsEachType(name);
        }
    }
    scene::Scene::current().clear();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    static const std::vector<std::string> kWords{"n",       "n.a",     "|a|b",     "|a|b.c",   "a[1]",     "a.b",
                                                 "degrees", "radians", "film",     "hours",    "open",     "closed",
                                                 "x:y",     "|",       "periodic", "|x:a|x:b", "ntscField"};
    fuzz::Random random(seed);
    std::vector<std::string> files = fuzz::split(data, size, kParts);
    const auto kind = random() % 16;
    if (kind < 12) {
        files[kScene] = fuzz::mutateJson(files[kScene], random, kWords);
    } else if (kind < 14) {
        files[kScene] = fuzz::mutateBytes(files[kScene], files[kScene].size() + 64);
    } else {
        files[kResource] = fuzz::mutateResource(files[kResource], random);
    }
    return fuzz::put(files, data, size, room);
}
