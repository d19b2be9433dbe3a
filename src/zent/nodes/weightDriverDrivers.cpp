#include "zent/nodes/weightDriverDrivers.h"

#include "zent/math/require.h"
#include "zent/math/rotation.h"
#include "zent/nodes/weightDriver.h"

#include <Eigen/LU>
#include <glm/matrix.hpp>

#include <cstring>
#include <optional>

namespace zent {

namespace {

constexpr int kModeIgnoresTwist = 1;

float poseDistance(vec4 a, vec4 b) {
    const vec4 difference = a - b;
    return guardedSqrt(glm::dot(difference, difference));
}

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

/// By their bits, so that NaN is the same as itself.
template <class T>
bool haveSameBits(const svec<T, 16>& a, const svec<T, 16>& b) {
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

} // namespace

struct MatrixPoses::Parts {
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

    bool isMade = false;
    int twistAxis = 0;
    bool invert = false;
    vec3 rotationOffset{0.0f};
    svec<mat4, 16> matrices, parents;
    svec<int, 16> modes;

    std::optional<PoseReader> reader;
    svec<vec4, 16> poses;
    float radius = 0.0f;
    bool isInvertible = false;
    Eigen::MatrixXf coefficients;

    void make();
};

void MatrixPoses::Parts::make() {
    reader.emplace(rotationOffset, twistAxis, invert);
    poses.clear();
    for (std::size_t i = 0; i < matrices.size(); ++i) {
        poses.push_back(reader->read(glm::inverse(parents[i]), matrices[i]));
        poses[i].w = modes[i] == kModeIgnoresTwist ? 0.0f : poses[i].w;
    }
    const Eigen::MatrixXf distances = pairwiseDistances(poses);
    radius = distances.mean(); // over all pairs, each pose with itself included
    const Eigen::MatrixXf kernel = distances.unaryExpr([this](float r) { return weightDriver__IMPL__rbf(r, radius); });
    isInvertible = Eigen::FullPivLU<Eigen::MatrixXf>(kernel).isInvertible();
    if (isInvertible) {
        coefficients = kernel.inverse(); // the pose values are the identity
    }
}

MatrixPoses::MatrixPoses() : parts_(std::make_unique<Parts>()) {}
MatrixPoses::~MatrixPoses() = default;

void MatrixPoses::weigh(int twistAxis, bool invert, const mat4& driverMatrix, const mat4& readerMatrix,
                        const svec<mat4, 16>& poseMatrices, const svec<mat4, 16>& poseParentMatrices,
                        const svec<int, 16>& poseModes, vec3 rotationOffset, svec<float, 16>& result) {
    const std::size_t count = poseMatrices.size();
    requireLists("weightDriverDrivers", count,
                 {{"pose parent matrices", poseParentMatrices.size()}, {"pose modes", poseModes.size()}});
    requireWeightDriverSize("pose matrices", count, count, 3 * count);
    result.assign(count, 0.0f);
    if (count == 0) {
        return;
    }
    Parts& parts = *parts_;
    if (!parts.isMade || parts.twistAxis != twistAxis || parts.invert != invert ||
        glm::floatBitsToInt(parts.rotationOffset) != glm::floatBitsToInt(rotationOffset) ||
        !haveSameBits(parts.matrices, poseMatrices) || !haveSameBits(parts.parents, poseParentMatrices) ||
        !haveSameBits(parts.modes, poseModes)) {
        parts.isMade = false;
        parts.twistAxis = twistAxis;
        parts.invert = invert;
        parts.rotationOffset = rotationOffset;
        parts.matrices = poseMatrices;
        parts.parents = poseParentMatrices;
        parts.modes = poseModes;
        parts.make();
        parts.isMade = true;
    }
    if (!parts.isInvertible) {
        return;
    }
    const vec4 driver = parts.reader->read(readerMatrix, driverMatrix);
    Eigen::Map<Eigen::VectorXf> weights(result.data(), static_cast<Eigen::Index>(count));
    for (std::size_t i = 0; i < count; ++i) {
        // The driver's twist counts only against the poses that use twist.
        const vec4 driverSeen(vec3(driver), poseModes[i] == kModeIgnoresTwist ? 0.0f : driver.w);
        weights += weightDriver__IMPL__rbf(poseDistance(parts.poses[i], driverSeen), parts.radius) *
                   parts.coefficients.row(static_cast<Eigen::Index>(i)).transpose();
    }
}

svec<float, 16> weightDriverDrivers(int, int, int twistAxis, bool invert, mat4 driverMatrix, mat4 readerMatrix,
                                    svec<mat4, 16> poseMatrices, svec<mat4, 16> poseParentMatrices,
                                    svec<int, 16> poseModes, vec3 rotationOffset) {
    svec<float, 16> result;
    MatrixPoses().weigh(twistAxis, invert, driverMatrix, readerMatrix, poseMatrices, poseParentMatrices, poseModes,
                        rotationOffset, result);
    return result;
}

} // namespace zent
