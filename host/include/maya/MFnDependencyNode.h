#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

class OPENMAYA_EXPORT MFnDependencyNode : public MFnBase {
public:
    explicit MFnDependencyNode(const MObject& node, MStatus* status = nullptr);

    MString name(MStatus* status = nullptr) const;
    /// The plug of an attribute by its long or short name or its alias; a null plug for none.
    MPlug findPlug(const MString& attribute, bool wantNetworkedPlug, MStatus* status = nullptr) const;
};
