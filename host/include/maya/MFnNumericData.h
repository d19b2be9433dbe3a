#pragma once

#include <maya/MFnBase.h>

/// Two or three numbers. A reader of another size or precision than the data's fails and leaves its arguments alone.
class OPENMAYA_EXPORT MFnNumericData : public MFnBase {
public:
    explicit MFnNumericData(const MObject& data, MStatus* status = nullptr);

    MStatus getData2Float(float& x, float& y) const;
    MStatus getData2Double(double& x, double& y) const;
    MStatus getData3Float(float& x, float& y, float& z) const;
    MStatus getData3Double(double& x, double& y, double& z) const;
};
