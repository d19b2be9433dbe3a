#include "zent/nodes/weightDriverDrivers.h"

#include "zent/math/require.h"
#include "zent/math/rotation.h"
#include "zent/nodes/weightDriver.h"

#include <Eigen/LU>
#include <glm/matrix.hpp>

namespace zent {

namespace {

constexpr int kModeIgnoresTwist = 1;

float poseDistance(vec4 a, vec4 b) {
    const vec4 difference = a - b;
    return guardedSqrt(glm::dot(difference, difference));
}

// Reduces a matrix to the direction of an axis and the twist about it.
struct PoseReader {
    mat4 inverseOffset;
    int twistAxis;
    vec3 axis;

    PoseReader(vec3 rotationOffset, int twistAxisIndex, bool invert)
        : inverseOffset(glm::inverse(eulerRotateMatrix(rotationOffset, kRotateXYZ))), twistAxis(twistAxisIndex),
          axis(twistAxis != 1 && twistAxis != 2, twistAxis == 1, twistAxis == 2) {
        axis = invert ? -axis : axis;
    }

    vec4 read(const mat4& space, const mat4& matrix) const {
        const mat4 local = inverseOffset * space * matrix;
        return vec4(transformVector(local, axis), weightDriver__IMPL__twistAngle(get_orient(local), twistAxis));
    }
};

Eigen::MatrixXf pairwiseDistances(const svec<vec4, 16>& poses) {
    const auto count = static_cast<Eigen::Index>(poses.size());
    Eigen::MatrixXf distances(count, count);
    for (Eigen::Index j = 0; j < count; ++j) {
        for (Eigen::Index i = 0; i < count; ++i) {
            distances(i, j) = poseDistance(poses[static_cast<std::size_t>(j)], poses[static_cast<std::size_t>(i)]);
        }
    }
    return distances;
}

} // namespace

svec<float, 16> weightDriverDrivers(int, int, int twistAxis, bool invert, mat4 driverMatrix, mat4 readerMatrix,
                                    svec<mat4, 16> poseMatrices, svec<mat4, 16> poseParentMatrices,
                                    svec<int, 16> poseModes, vec3 rotationOffset) {
    const std::size_t count = poseMatrices.size();
    requireLists("weightDriverDrivers", count,
                 {{"pose parent matrices", poseParentMatrices.size()}, {"pose modes", poseModes.size()}});
    requireWeightDriverSize("pose matrices", count, count, 3 * count);
    svec<float, 16> result(count, 0.0f);
    if (count == 0) {
        return result;
    }

    const PoseReader reader(rotationOffset, twistAxis, invert);
    const vec4 driver = reader.read(readerMatrix, driverMatrix);
    svec<vec4, 16> poses;
    for (std::size_t i = 0; i < count; ++i) {
        poses.push_back(reader.read(glm::inverse(poseParentMatrices[i]), poseMatrices[i]));
        poses[i].w = poseModes[i] == kModeIgnoresTwist ? 0.0f : poses[i].w;
    }

    const Eigen::MatrixXf distances = pairwiseDistances(poses);
    const float radius = distances.mean(); // over all pairs, each pose with itself included
    const auto kernelAt = [radius](float r) { return weightDriver__IMPL__rbf(r, radius); };
    const Eigen::MatrixXf kernel = distances.unaryExpr(kernelAt);
    if (!Eigen::FullPivLU<Eigen::MatrixXf>(kernel).isInvertible()) {
        return result;
    }
    const Eigen::MatrixXf coefficients = kernel.inverse(); // the pose values are the identity

    Eigen::Map<Eigen::VectorXf> weights(result.data(), static_cast<Eigen::Index>(count));
    for (std::size_t i = 0; i < count; ++i) {
        // The driver's twist counts only against the poses that use twist.
        const vec4 driverSeen(vec3(driver), poseModes[i] == kModeIgnoresTwist ? 0.0f : driver.w);
        weights +=
            kernelAt(poseDistance(poses[i], driverSeen)) * coefficients.row(static_cast<Eigen::Index>(i)).transpose();
    }
    return result;
}

} // namespace zent
