#include "zent/nodes/weightDriverPoses.h"

#include "zent/math/require.h"
#include "zent/nodes/weightDriver.h"

#include <Eigen/LU>

namespace zent {

namespace {

std::size_t poseCountOf(const PoseElements& elements) {
    return elements.empty() ? 0 : std::size_t{elements.rbegin()->first.first} + 1;
}

void requireElements(const char* list, const PoseElements& elements, std::size_t bound, const char* what) {
    for (const auto& [key, value] : elements) {
        requireIndex(list, key.first, key.second, bound, what);
    }
}

} // namespace

svec<float, 16> weightDriverPoses(int, int, svec<float, 16> input, PoseElements poseInputs, PoseElements poseValues) {
    const std::size_t inputCount = poseCountOf(poseInputs);
    const std::size_t valueCount = poseCountOf(poseValues);
    const std::size_t count = std::max(inputCount, valueCount);
    const char* largest = inputCount < valueCount ? "pose values" : "pose inputs";
    requireWeightDriverSize(largest, count, std::max(count, input.size()),
                            input.size() + poseInputs.size() + poseValues.size());
    requireElements("pose inputs", poseInputs, input.size(), "the input");
    requireElements("pose values", poseValues, count, "the list of poses");
    svec<float, 16> result(count, 0.0f);
    if (count == 0) {
        return result;
    }

    // One column for each pose of `inputs`, one row for each pose of `values`.
    const auto n = static_cast<Eigen::Index>(count);
    const Eigen::Map<const Eigen::VectorXf> at(input.data(), static_cast<Eigen::Index>(input.size()));
    Eigen::MatrixXf inputs = Eigen::MatrixXf::Zero(at.size(), n);
    for (const auto& [key, value] : poseInputs) {
        inputs(key.second, key.first) = value;
    }
    Eigen::MatrixXf values = Eigen::MatrixXf::Zero(n, n);
    for (const auto& [key, value] : poseValues) {
        values(key.first, key.second) = value;
    }
    const auto distancesTo = [&inputs](const auto& point) {
        return (inputs.colwise() - point).colwise().squaredNorm().unaryExpr(&guardedSqrt).transpose().eval();
    };

    Eigen::MatrixXf distances(n, n);
    for (Eigen::Index j = 0; j < n; ++j) {
        distances.col(j) = distancesTo(inputs.col(j));
    }
    const float radius = distances.mean(); // over all pairs, each pose with itself included
    const auto kernelAt = [radius](float r) { return weightDriver__IMPL__rbf(r, radius); };
    const Eigen::MatrixXf kernel = distances.unaryExpr(kernelAt);
    // No test of invertibility, on purpose: equal poses give infinities or NaN, unlike the transform-driven mode.
    const Eigen::MatrixXf coefficients = kernel.inverse() * values;

    Eigen::Map<Eigen::VectorXf>(result.data(), n) = coefficients.transpose() * distancesTo(at).unaryExpr(kernelAt);
    return result;
}

} // namespace zent
