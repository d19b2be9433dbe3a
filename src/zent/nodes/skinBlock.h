#pragma once

#include "zent/geometry/weights.h"
#include "zent/math/lanes.h"

#include <cstddef>

namespace zent {

/// What an influence does to a point: the columns of its linear part, and its translation. One line of the cache.
struct alignas(64) Influence {
    Lanes column[4];

    Lanes operator()(vec3 p) const { return column[0] * p.x + column[1] * p.y + column[2] * p.z + column[3]; }
};

/// The weights of a skin, and what they act on.
struct SkinSums {
    const SkinWeights::value_type* weights;
    std::size_t weightCount;
    const Influence* influences;
    std::size_t influenceCount;
    const vec3* from;
    vec3* sums;
    std::size_t pointCount;
};

/// Whether this processor has the registers for the following, which is not to be called elsewhere.
bool canAddWide();

/// Adds the weighted points from weight `first` on, four points side by side, as long as four that follow each other
/// have as many influences as the first one has, one to five. Stops, and gives the weight where it stopped, before
/// anything that an index names outside the lists: it is left to the caller. The bits are those of one influence after
/// the other.
std::size_t addRows(const SkinSums& skin, std::size_t first);

} // namespace zent
