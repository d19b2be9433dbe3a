#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

/// A path from the root of the scene to a node.
class OPENMAYA_EXPORT MDagPath {
public:
    static MStatus getAPathTo(const MObject& node, MDagPath& path);

    bool isValid() const { return !node_.isNull(); }
    MObject node(MStatus* status = nullptr) const;
    /// "|group|arm|armShape".
    MString fullPathName(MStatus* status = nullptr) const;
    /// As much of the path, from its end, as tells the node from others.
    MString partialPathName(MStatus* status = nullptr) const;
    /// How many nodes are on the path.
    unsigned int length(MStatus* status = nullptr) const;
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned int index, MStatus* status = nullptr) const;
    /// Takes nodes off the end.
    MStatus pop(unsigned int count = 1);
    /// Goes on to a child.
    MStatus push(const MObject& child);

private:
    MObject node_;
};
