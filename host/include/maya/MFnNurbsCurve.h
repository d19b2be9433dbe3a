#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFnBase.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>

class OPENMAYA_EXPORT MFnNurbsCurve : public MFnBase {
public:
    enum Form { kInvalid, kOpen, kClosed, kPeriodic, kLast };

    explicit MFnNurbsCurve(const MObject& curve, MStatus* status = nullptr);

    int degree(MStatus* status = nullptr) const;
    Form form(MStatus* status = nullptr) const;
    MStatus getCVs(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
    MStatus getKnots(MDoubleArray& knots) const;
};
