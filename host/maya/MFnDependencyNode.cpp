#include <maya/MFnDependencyNode.h>

#include "Scene.h"
#include "setStatus.h"

namespace {

const scene::Node* asNode(const MObject& object) {
    const MFn::Type type = object.apiType();
    return type == MFn::kDagNode || type == MFn::kDependencyNode ? static_cast<const scene::Node*>(object.object())
                                                                 : nullptr;
}

void addConnected(const std::vector<scene::Slot*>& slots, MPlugArray& plugs) {
    for (scene::Slot* slot : slots) {
        if (MPlug(slot).isConnected()) {
            plugs.append(MPlug(slot));
        }
        addConnected(slot->children, plugs);
    }
}

} // namespace

MFnDependencyNode::MFnDependencyNode(const MObject& node, MStatus* status) : MFnBase(node) {
    setStatus(status, asNode(node) != nullptr);
}

MString MFnDependencyNode::name(MStatus* status) const {
    const scene::Node* node = asNode(object_);
    return setStatus(status, node != nullptr) ? MString(node->name.c_str()) : MString();
}

MPlug MFnDependencyNode::findPlug(const MString& attribute, bool, MStatus* status) const {
    const scene::Node* node = asNode(object_);
    scene::Slot* slot = node == nullptr ? nullptr : node->attribute({attribute.asChar(), attribute.length()});
    setStatus(status, slot != nullptr);
    return MPlug(slot);
}

MString MFnDependencyNode::typeName(MStatus* status) const {
    const scene::Node* node = asNode(object_);
    if (!setStatus(status, node != nullptr)) {
        return {};
    }
    if (!node->typeName.empty()) {
        return MString(node->typeName.c_str());
    }
    return node->isImplied ? "transform" : node->isDag() ? "unknownDag" : "unknown";
}

bool MFnDependencyNode::hasAttribute(const MString& attribute, MStatus* status) const {
    setStatus(status, asNode(object_) != nullptr);
    return !findPlug(attribute, true).isNull();
}

unsigned int MFnDependencyNode::attributeCount(MStatus* status) const {
    const scene::Node* node = asNode(object_);
    return setStatus(status, node != nullptr) ? static_cast<unsigned int>(node->attributes.size()) : 0;
}

MObject MFnDependencyNode::attribute(unsigned int index, MStatus* status) const {
    return setStatus(status, index < attributeCount()) ? MObject(asNode(object_)->attributes[index])
                                                       : MObject::kNullObj;
}

MStatus MFnDependencyNode::getConnections(MPlugArray& plugs) const {
    const scene::Node* node = asNode(object_);
    if (node == nullptr) {
        return MStatus::kFailure;
    }
    plugs.clear();
    addConnected(node->attributes, plugs);
    addConnected({&node->message}, plugs);
    return plugs.length() > 0 ? MStatus::kSuccess : MStatus::kFailure;
}
