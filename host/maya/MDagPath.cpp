#include <maya/MDagPath.h>

#include "Scene.h"
#include "setStatus.h"

namespace {

const scene::Node* pathNode(const MObject& object) {
    return static_cast<const scene::Node*>(object.object());
}

} // namespace

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path) {
    if (node.apiType() != MFn::kDagNode) {
        path.node_ = MObject::kNullObj;
        return MStatus::kInvalidParameter;
    }
    path.node_ = node;
    return MStatus::kSuccess;
}

MObject MDagPath::node(MStatus* status) const {
    setStatus(status, isValid());
    return node_;
}

MString MDagPath::fullPathName(MStatus* status) const {
    return setStatus(status, isValid()) ? MString(pathNode(node_)->path().c_str()) : MString();
}

MString MDagPath::partialPathName(MStatus* status) const {
    if (!setStatus(status, isValid())) {
        return {};
    }
    return MString(scene::Scene::current().shortestName(*pathNode(node_)).c_str());
}

unsigned int MDagPath::length(MStatus* status) const {
    unsigned int length = 0;
    for (const scene::Node* node = pathNode(node_); node != nullptr; node = node->parent) {
        ++length;
    }
    setStatus(status, length > 0);
    return length;
}

unsigned int MDagPath::childCount(MStatus* status) const {
    return setStatus(status, isValid()) ? static_cast<unsigned int>(pathNode(node_)->children.size()) : 0;
}

MObject MDagPath::child(unsigned int index, MStatus* status) const {
    return setStatus(status, index < childCount()) ? MObject(pathNode(node_)->children[index]) : MObject::kNullObj;
}

MStatus MDagPath::pop(unsigned int count) {
    if (count > length()) {
        return MStatus::kFailure;
    }
    for (; count > 0; --count) {
        node_ = MObject(pathNode(node_)->parent);
    }
    return MStatus::kSuccess;
}

MStatus MDagPath::push(const MObject& child) {
    if (!isValid() || child.apiType() != MFn::kDagNode || pathNode(child)->parent != pathNode(node_)) {
        return MStatus::kInvalidParameter;
    }
    node_ = child;
    return MStatus::kSuccess;
}
