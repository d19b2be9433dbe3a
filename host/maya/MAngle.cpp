#include <maya/MAngle.h>

namespace {

constexpr double kPi = 3.141592653589793;

double radiansOf(MAngle::Unit unit) {
    switch (unit) {
    case MAngle::kDegrees:
        return kPi / 180.0;
    case MAngle::kAngMinutes:
        return kPi / (180.0 * 60.0);
    case MAngle::kAngSeconds:
        return kPi / (180.0 * 3600.0);
    default:
        return 1.0;
    }
}

} // namespace

double MAngle::as(Unit unit) const {
    return unit == unit_ ? value_ : value_ * radiansOf(unit_) / radiansOf(unit);
}
