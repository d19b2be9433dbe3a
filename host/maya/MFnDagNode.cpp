#include <maya/MFnDagNode.h>

#include "Node.h"
#include "setStatus.h"

namespace {

const scene::Node* asDagNode(const MObject& object) {
    return object.apiType() == MFn::kDagNode ? static_cast<const scene::Node*>(object.object()) : nullptr;
}

} // namespace

MFnDagNode::MFnDagNode(const MObject& node, MStatus* status) : MFnDependencyNode(node) {
    setStatus(status, asDagNode(node) != nullptr);
}

MFnDagNode::MFnDagNode(const MDagPath& path, MStatus* status) : MFnDagNode(path.node(), status) {}

unsigned int MFnDagNode::parentCount(MStatus* status) const {
    return setStatus(status, asDagNode(object_) != nullptr) ? 1 : 0;
}

MObject MFnDagNode::parent(unsigned int index, MStatus* status) const {
    return setStatus(status, index < parentCount()) ? MObject(asDagNode(object_)->parent) : MObject::kNullObj;
}

unsigned int MFnDagNode::childCount(MStatus* status) const {
    const scene::Node* node = asDagNode(object_);
    return setStatus(status, node != nullptr) ? static_cast<unsigned int>(node->children.size()) : 0;
}

MObject MFnDagNode::child(unsigned int index, MStatus* status) const {
    return setStatus(status, index < childCount()) ? MObject(asDagNode(object_)->children[index]) : MObject::kNullObj;
}

MString MFnDagNode::fullPathName(MStatus* status) const {
    MDagPath path;
    getPath(path);
    return path.fullPathName(status);
}

MString MFnDagNode::partialPathName(MStatus* status) const {
    MDagPath path;
    getPath(path);
    return path.partialPathName(status);
}

MStatus MFnDagNode::getPath(MDagPath& path) const {
    return MDagPath::getAPathTo(object_, path);
}
