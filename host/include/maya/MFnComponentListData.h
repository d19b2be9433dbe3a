#pragma once

#include <maya/MFnBase.h>

/// A list of components, such as the members of a deformer's target.
class OPENMAYA_EXPORT MFnComponentListData : public MFnBase {
public:
    explicit MFnComponentListData(const MObject& data, MStatus* status = nullptr);

    unsigned int length(MStatus* status = nullptr) const;
    /// The components of one entry, for MFnComponent and its kinds; a null object beyond the end.
    MObject operator[](unsigned int index) const;
};
