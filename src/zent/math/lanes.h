#pragma once

#include <cstring>

namespace zent {

/// Four floats in one register: an extension of GCC and Clang, which leave no lane out of it.
using Lanes = float __attribute__((vector_size(16)));

/// Four floats from memory, of any alignment.
inline Lanes loadLanes(const float* values) {
    Lanes lanes;
    std::memcpy(&lanes, values, sizeof lanes);
    return lanes;
}

inline void storeLanes(Lanes lanes, float* values) {
    std::memcpy(values, &lanes, sizeof lanes);
}

} // namespace zent
