#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include "Scene.h"

MStatus MSelectionList::getDependNode(unsigned int index, MObject& node) const {
    if (index >= length()) {
        return MStatus::kInvalidParameter;
    }
    node = nodes_[index];
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& path) const {
    return index < length() ? MDagPath::getAPathTo(nodes_[index], path) : MStatus(MStatus::kInvalidParameter);
}

MStatus MSelectionList::add(const MObject& node) {
    if (node.isNull()) {
        return MStatus::kInvalidParameter;
    }
    nodes_.push_back(node);
    return MStatus::kSuccess;
}

MStatus MSelectionList::clear() {
    nodes_.clear();
    return MStatus::kSuccess;
}

MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list) {
    return list.add(MObject(scene::Scene::current().findNode({name.asChar(), name.length()})));
}

MStatus MGlobal::getActiveSelectionList(MSelectionList& list, bool) {
    list.clear();
    for (const scene::Node* node : scene::Scene::current().selection()) {
        list.add(MObject(node));
    }
    return MStatus::kSuccess;
}
