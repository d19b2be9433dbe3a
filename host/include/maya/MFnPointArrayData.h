#pragma once

#include <maya/MFnBase.h>
#include <maya/MPointArray.h>

/// A list of points that a plug holds, such as a target's deltas.
class OPENMAYA_EXPORT MFnPointArrayData : public MFnBase {
public:
    explicit MFnPointArrayData(const MObject& data, MStatus* status = nullptr);

    unsigned int length(MStatus* status = nullptr) const;
    MStatus copyTo(MPointArray& points) const;
};
