#include "meshAt.h"

#include "Node.h"

namespace scene {

namespace {

MObject meshOf(const Slot* slot) {
    const MObject data(slot == nullptr ? nullptr : evaluated(*slot).data.get());
    return as<MeshData>(data) == nullptr ? MObject::kNullObj : data;
}

MObject meshOf(const Node& node) {
    MObject mesh = meshOf(node.attribute("outMesh"));
    for (std::size_t i = 0; mesh.isNull() && i < node.attributes.size(); ++i) {
        mesh = meshOf(node.attributes[i]);
    }
    return mesh;
}

} // namespace

MObject meshAt(const MDagPath& path) {
    if (!path.isValid()) {
        return MObject::kNullObj;
    }
    const auto& node = *static_cast<const Node*>(path.node().object());
    MObject mesh = meshOf(node);
    for (std::size_t i = 0; mesh.isNull() && i < node.children.size(); ++i) {
        mesh = meshOf(*node.children[i]);
    }
    return mesh;
}

} // namespace scene
