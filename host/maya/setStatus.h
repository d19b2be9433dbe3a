#pragma once

#include <maya/MStatus.h>

/// Tells a caller that asked for a status whether its call could be answered.
inline bool setStatus(MStatus* status, bool answered) {
    if (status != nullptr) {
        *status = answered ? MStatus::kSuccess : MStatus::kFailure;
    }
    return answered;
}
