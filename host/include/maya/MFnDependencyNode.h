#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlugArray.h>
#include <maya/MString.h>

class OPENMAYA_EXPORT MFnDependencyNode : public MFnBase {
public:
    explicit MFnDependencyNode(const MObject& node, MStatus* status = nullptr);

    MString name(MStatus* status = nullptr) const;
    /// "joint", "skinCluster"; "unknown" and, in the DAG, "unknownDag" where the scene does not tell.
    MString typeName(MStatus* status = nullptr) const;
    bool hasAttribute(const MString& attribute, MStatus* status = nullptr) const;
    /// The attributes that the scene tells, in its order.
    unsigned int attributeCount(MStatus* status = nullptr) const;
    MObject attribute(unsigned int index, MStatus* status = nullptr) const;
    /// Replaces a list by the node's plugs that are at an end of a connection.
    MStatus getConnections(MPlugArray& plugs) const;
    /// The plug of an attribute by its long or short name or its alias; a null plug for none.
    MPlug findPlug(const MString& attribute, bool wantNetworkedPlug, MStatus* status = nullptr) const;
};
