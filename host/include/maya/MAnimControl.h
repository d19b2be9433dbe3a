#pragma once

#include <maya/MStatus.h>
#include <maya/MTime.h>

/// The scene's current time.
class OPENMAYA_EXPORT MAnimControl {
public:
    static MTime currentTime();
    static MStatus setCurrentTime(const MTime& time);
};
