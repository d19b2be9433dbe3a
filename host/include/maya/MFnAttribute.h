#pragma once

#include <maya/MFnBase.h>
#include <maya/MString.h>

/// An attribute of a node.
class OPENMAYA_EXPORT MFnAttribute : public MFnBase {
public:
    explicit MFnAttribute(const MObject& attribute, MStatus* status = nullptr);

    MString name(MStatus* status = nullptr) const;
    /// The long name where it has no other.
    MString shortName(MStatus* status = nullptr) const;
    bool isArray(MStatus* status = nullptr) const;
};
