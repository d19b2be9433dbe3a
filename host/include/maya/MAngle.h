#pragma once

#include <maya/MTypes.h>

/// An angle with its unit.
class OPENMAYA_EXPORT MAngle {
public:
    enum Unit { kInvalid, kRadians, kDegrees, kAngMinutes, kAngSeconds, kLast };

    MAngle() = default;
    explicit MAngle(double value, Unit unit = kRadians) : value_(value), unit_(unit) {}

    double value() const { return value_; }
    Unit unit() const { return unit_; }
    double asRadians() const { return as(kRadians); }
    double asDegrees() const { return as(kDegrees); }
    double as(Unit unit) const;
    /// What the user interface shows: degrees.
    static Unit uiUnit() { return kDegrees; }

private:
    double value_ = 0.0;
    Unit unit_ = kRadians;
};
