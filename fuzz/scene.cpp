// Any scene file and resource file, in this order, make a scene or a std::runtime_error, and each plug of that scene
// can be read as each type, under each name that a manifest could give it.
#include "support/input.h"

#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <maya/MAnimControl.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnComponentListData.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnMesh.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>

#include <fmt/format.h>

#include <cstdlib>
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

/// A list as long as the file could never tell has no end worth waiting for.
template <class List>
bool isShort(const List& list) {
    return list.length() < 1000;
}

void walkData(const MPlug& plug) {
    const MObject data = plug.asMObject();
    MPointArray points;
    MFnPointArrayData(data).copyTo(points);
    const MFnComponentListData list(data);
    for (unsigned int i = 0; i < list.length(); ++i) {
        MIntArray u;
        MIntArray v;
        MIntArray w;
        if (MFnComponent(list[i]).elementCount() < 1000) {
            MFnSingleIndexedComponent(list[i]).getElements(u);
            MFnDoubleIndexedComponent(list[i]).getElements(u, v);
            MFnTripleIndexedComponent(list[i]).getElements(u, v, w);
        }
    }
    const MFnMesh mesh(data);
    int2 edge = {};
    mesh.getEdgeVertices(mesh.numEdges() - 1, edge);
}

/// Steps over the whole scene as a tool does: nodes, connections both ways, children and elements.
void walk() {
    int left = 2000; // plugs
    for (MItDependencyNodes it; !it.isDone() && left > 0; it.next()) {
        const MFnDagNode node(it.thisNode());
        node.typeName();
        if (it.thisNode().hasFn(MFn::kDagNode)) {
            MDagPath path;
            node.getPath(path);
            if (path.length() < 50 &&
                zent::selectPlug(std::string(path.partialPathName().asChar()) + ".message").node() != it.thisNode()) {
                std::abort(); // the shortest path of a node is its own
            }
            while (path.pop()) {
            }
        }
        MPlugArray plugs;
        node.getConnections(plugs);
        for (unsigned int i = 0; i < node.attributeCount(); ++i) {
            plugs.append(node.findPlug(MFnAttribute(node.attribute(i)).name(), true));
        }
        for (unsigned int i = 0; i < plugs.length() && --left > 0; ++i) {
            const MPlug plug = plugs[i];
            MPlugArray ends;
            plug.destinations(ends);
            plug.source();
            walkData(plug);
            MIntArray indices;
            plug.getExistingArrayAttributeIndices(indices);
            for (unsigned int e = 0; e < plug.numElements() && isShort(plugs); ++e) {
                plugs.append(plug.elementByPhysicalIndex(e));
            }
            for (unsigned int c = 0; c < plug.numChildren() && isShort(plugs); ++c) {
                plugs.append(plug.child(c));
            }
        }
    }
}

void tell(const scene::Slot& slot, std::string& text) {
    text += scene::fullName(slot) + fmt::format(" {} {} {:a} {};", static_cast<int>(slot.kind),
                                                static_cast<int>(slot.type), slot.number, slot.unit);
    for (const scene::Slot* child : slot.children) {
        tell(*child, text);
    }
}

/// What a scene holds, its shapes aside, or "error" and why it cannot be opened.
std::string open(const std::string& file, const std::string& resource) {
    scene::Scene& scene = scene::Scene::current();
    scene.clear();
    std::string text;
    try {
        scene::readSceneFile(file, resource, scene);
        for (std::size_t i = 0; i < scene.nodeCount(); ++i) {
            text += scene.node(i).typeName + " ";
            for (const scene::Slot* slot : scene.node(i).attributes) {
                tell(*slot, text);
            }
        }
    } catch (const std::runtime_error& error) {
        text = std::string("error ") + error.what();
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::MemoryFile files[kParts];
    const std::vector<std::string> contents = fuzz::split(data, size, kParts);
    if (fuzz::isMostlyMissing(contents[kResource])) {
        return 0;
    }
    const std::string resource = files[kResource].write(contents[kResource]);
    // The JSON library passes over the mark; without it, plain text is read in another way.
    const std::string byLibrary = open(files[kScene].write("\xEF\xBB\xBF" + contents[kScene]), resource);
    const std::string told = open(files[kScene].write(contents[kScene]), resource);
    const bool isOpen = told.rfind("error", 0) != 0;
    if (told != byLibrary && told.find("parse error") == std::string::npos) {
        std::abort();
    }
    if (const nlohmann::json file = nlohmann::json::parse(contents[kScene], nullptr, false);
        isOpen && file.is_object() && file.contains("nodes")) {
        const Names names(file);
        for (const std::string& name : names.list()) {
            readAsEachType(name);
        }
        MAnimControl::setCurrentTime(MTime(MAnimControl::currentTime().as(MTime::kFilm) + 1.0));
        walk();
    }
    scene::Scene::current().clear();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
    static const std::vector<std::string> kWords{
        "n",         "n.a",    "|a|b",       "|a|b.c", "a[1]",    "a.b",      "degrees",        "radians",
        "film",      "hours",  "open",       "closed", "x:y",     "|",        "periodic",       "|x:a|x:b",
        "ntscField", "type",   ".type",      "time",   "outTime", "vtx[0:2]", "unitConversion", "n.message",
        "input",     "output", "pt[*][*][*]"};
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
