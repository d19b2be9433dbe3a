#include <maya/MTime.h>

namespace {

double perSecond(MTime::Unit unit) {
    switch (unit) {
    case MTime::kHours:
        return 1.0 / 3600.0;
    case MTime::kMinutes:
        return 1.0 / 60.0;
    case MTime::kMilliseconds:
        return 1000.0;
    case MTime::kGames:
        return 15.0;
    case MTime::kFilm:
        return 24.0;
    case MTime::kPALFrame:
        return 25.0;
    case MTime::kNTSCFrame:
        return 30.0;
    case MTime::kShowScan:
        return 48.0;
    case MTime::kPALField:
        return 50.0;
    case MTime::kNTSCField:
        return 60.0;
    default:
        return 1.0;
    }
}

} // namespace

double MTime::as(Unit unit) const {
    return unit == unit_ ? value_ : value_ / perSecond(unit_) * perSecond(unit);
}
