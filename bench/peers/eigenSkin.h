#pragma once

#include <cstddef>
#include <cstdint>

namespace zent::peers {

struct FourInfluences {
    std::uint16_t influence[4];
    float weight[4];
};

/// A linear blend skin as Eigen's users write it; matrices of 16 floats, points of 3.
void eigenSkin(const float* matrix, const float* bindPreMatrix, std::size_t influences, const FourInfluences* packed,
               const float* from, float* to, std::size_t points);

} // namespace zent::peers
