#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MTime.h>

/// A node of a type animCurve*: keys, with the tangents that Maya has worked out.
class OPENMAYA_EXPORT MFnAnimCurve : public MFnDependencyNode {
public:
    enum AnimCurveType {
        kAnimCurveTA = 0, ///< from time to an angle
        kAnimCurveTL,     ///< to a length
        kAnimCurveTT,     ///< to a time
        kAnimCurveTU,     ///< to a plain number
        kAnimCurveUA,     ///< from a plain number
        kAnimCurveUL,
        kAnimCurveUT,
        kAnimCurveUU,
        kAnimCurveUnknown
    };
    enum TangentType {
        kTangentGlobal = 0,
        kTangentFixed,
        kTangentLinear,
        kTangentFlat,
        kTangentSmooth,
        kTangentStep,
        kTangentSlow,
        kTangentFast,
        kTangentClamped,
        kTangentPlateau,
        kTangentStepNext,
        kTangentAuto
    };
    enum InfinityType { kConstant = 0, kLinear = 1, kCycle = 3, kCycleRelative = 4, kOscillate = 5 };
    using TangentValue = double;

    explicit MFnAnimCurve(const MObject& node, MStatus* status = nullptr);

    AnimCurveType animCurveType(MStatus* status = nullptr) const;
    bool isTimeInput(MStatus* status = nullptr) const;
    unsigned int numKeys(MStatus* status = nullptr) const;
    MTime time(unsigned int index, MStatus* status = nullptr) const;
    double unitlessInput(unsigned int index, MStatus* status = nullptr) const;
    /// Radians for an angle.
    double value(unsigned int index, MStatus* status = nullptr) const;
    TangentType inTangentType(unsigned int index, MStatus* status = nullptr) const;
    TangentType outTangentType(unsigned int index, MStatus* status = nullptr) const;
    /// In the units that the user interface shows: x in that of the key's time, y in degrees where the curve gives an
    /// angle. Fails where the scene file does not tell the tangent and its type alone does not.
    MStatus getTangent(unsigned int index, TangentValue& x, TangentValue& y, bool inTangent) const;
    bool isWeighted(MStatus* status = nullptr) const;
    InfinityType preInfinityType(MStatus* status = nullptr) const;
    InfinityType postInfinityType(MStatus* status = nullptr) const;

private:
    TangentType tangentType(unsigned int index, const char* multi, MStatus* status) const;
    InfinityType infinityType(const char* attribute, MStatus* status) const;
    double inputOf(unsigned int index) const;
};
