#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>

/// A node of the DAG.
class OPENMAYA_EXPORT MFnDagNode : public MFnDependencyNode {
public:
    explicit MFnDagNode(const MObject& node, MStatus* status = nullptr);
    explicit MFnDagNode(const MDagPath& path, MStatus* status = nullptr);

    /// One, the world or a node; a node is never under more than one parent here.
    unsigned int parentCount(MStatus* status = nullptr) const;
    /// A null object for a node right below the world, which is no node here.
    MObject parent(unsigned int index, MStatus* status = nullptr) const;
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned int index, MStatus* status = nullptr) const;
    MString fullPathName(MStatus* status = nullptr) const;
    /// As much of the path as tells the node from others.
    MString partialPathName(MStatus* status = nullptr) const;
    MStatus getPath(MDagPath& path) const;
};
