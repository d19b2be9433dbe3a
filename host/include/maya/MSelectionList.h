#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <vector>

/// A list of nodes.
class OPENMAYA_EXPORT MSelectionList {
public:
    unsigned int length() const { return static_cast<unsigned int>(nodes_.size()); }
    bool isEmpty() const { return nodes_.empty(); }
    MStatus getDependNode(unsigned int index, MObject& node) const;
    MStatus getDagPath(unsigned int index, MDagPath& path) const;
    MStatus add(const MObject& node);
    MStatus clear();

private:
    std::vector<MObject> nodes_;
};
