#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFnBase.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>

class OPENMAYA_EXPORT MFnNurbsSurface : public MFnBase {
public:
    enum Form { kInvalid, kOpen, kClosed, kPeriodic, kLast };

    explicit MFnNurbsSurface(const MObject& surface, MStatus* status = nullptr);

    int degreeU(MStatus* status = nullptr) const;
    int degreeV(MStatus* status = nullptr) const;
    Form formInU(MStatus* status = nullptr) const;
    Form formInV(MStatus* status = nullptr) const;
    MStatus getKnotsInU(MDoubleArray& knots) const;
    MStatus getKnotsInV(MDoubleArray& knots) const;
    /// The control points, V running fastest.
    MStatus getCVs(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
};
