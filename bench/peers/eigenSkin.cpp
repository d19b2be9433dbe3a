// Compiled for this processor, unlike all the rest: so nothing of the product is included here.
#include "eigenSkin.h"

#include <Eigen/Dense>

#include <vector>

namespace zent::peers {

void eigenSkin(const float* matrix, const float* bindPreMatrix, std::size_t influences, const FourInfluences* packed,
               const float* from, float* to, std::size_t points) {
    using Map4 = Eigen::Map<const Eigen::Matrix4f>;
    std::vector<Eigen::Matrix4f, Eigen::aligned_allocator<Eigen::Matrix4f>> palette(influences);
    for (std::size_t i = 0; i < influences; ++i) {
        palette[i] = Map4(matrix + 16 * i) * Map4(bindPreMatrix + 16 * i);
    }
    for (std::size_t i = 0; i < points; ++i) {
        const FourInfluences& p = packed[i];
        const Eigen::Vector4f point(from[3 * i], from[3 * i + 1], from[3 * i + 2], 1.0f);
        const Eigen::Matrix4f blended = p.weight[0] * palette[p.influence[0]] + p.weight[1] * palette[p.influence[1]] +
                                        p.weight[2] * palette[p.influence[2]] + p.weight[3] * palette[p.influence[3]];
        const Eigen::Vector4f moved = blended * point;
        Eigen::Map<Eigen::Vector3f>(to + 3 * i) = moved.head<3>();
    }
}

} // namespace zent::peers
