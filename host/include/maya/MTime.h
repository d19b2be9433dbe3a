#pragma once

#include <maya/MTypes.h>

/// A time with its unit.
class OPENMAYA_EXPORT MTime {
public:
    enum Unit {
        kInvalid,
        kHours,
        kMinutes,
        kSeconds,
        kMilliseconds,
        kGames,     ///< 15 frames a second
        kFilm,      ///< 24 frames a second
        kPALFrame,  ///< 25 frames a second
        kNTSCFrame, ///< 30 frames a second
        kShowScan,  ///< 48 frames a second
        kPALField,  ///< 50 fields a second
        kNTSCField, ///< 60 fields a second
        kLast
    };

    MTime() = default;
    explicit MTime(double value, Unit unit = kFilm) : value_(value), unit_(unit) {}

    /// The time in its own unit.
    double value() const { return value_; }
    Unit unit() const { return unit_; }
    double as(Unit unit) const;

private:
    double value_ = 0.0;
    Unit unit_ = kFilm;
};
