#include "meshAt.h"

#include "Node.h"

namespace scene {

namespace {

MObject meshOf(const Slot* slot) {
    const MObject data(slot == nullptr ? nullptr : evaluated(*slot).data.get());
    return as<MeshData>(data) == nullptr ? MObject::kNullObj : data;
}

/// The mesh of an attribute or, as in "worldMesh[0]", of one of its elements.
MObject meshIn(const Slot& slot) {
    MObject mesh = meshOf(&slot);
    const bool holdsMeshes =
        slot.kind == Slot::Kind::multi && !slot.children.empty() && slot.children.front()->dataType == MeshData::kType;
    for (std::size_t i = 0; holdsMeshes && mesh.isNull() && i < slot.children.size(); ++i) {
        mesh = meshOf(slot.children[i]);
    }
    return mesh;
}

MObject meshOf(const Node& node) {
    MObject mesh = meshOf(node.attribute("outMesh"));
    for (std::size_t i = 0; mesh.isNull() && i < node.attributes.size(); ++i) {
        mesh = meshIn(*node.attributes[i]);
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
