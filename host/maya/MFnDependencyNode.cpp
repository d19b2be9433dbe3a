#include <maya/MFnDependencyNode.h>

#include "Node.h"
#include "setStatus.h"

namespace {

const scene::Node* asNode(const MObject& object) {
    const MFn::Type type = object.apiType();
    return type == MFn::kDagNode || type == MFn::kDependencyNode ? static_cast<const scene::Node*>(object.object())
                                                                 : nullptr;
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
