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

private:
    MObject node_;
};
