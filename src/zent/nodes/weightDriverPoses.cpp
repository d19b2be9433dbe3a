#include "zent/nodes/weightDriverPoses.h"

#include "zent/math/require.h"
#include "zent/nodes/weightDriver.h"

#include <Eigen/LU>

#include <algorithm>

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

/// By their bits, so that NaN is the same as itself.
bool isSame(const PoseElements& a, const PoseElements& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](const auto& x, const auto& y) {
               return x.first == y.first && glm::floatBitsToInt(x.second) == glm::floatBitsToInt(y.second);
           });
}

} // namespace

struct ValuePoses::Parts {
    bool isMade = false;
    std::size_t size = 0; ///< of the input
    PoseElements poseInputs, poseValues;
    float radius = 0.0f;
    Eigen::MatrixXf inputs;       ///< one column for each pose
    Eigen::MatrixXf coefficients; ///< one row for each pose
    Eigen::VectorXf distances;    ///< of the input to the poses
    Eigen::VectorXf kernel;

    template <class Point>
    void measure(const Point& point) {
        distances = (inputs.colwise() - point).colwise().squaredNorm().unaryExpr(&guardedSqrt).transpose();
    }
    void make(std::size_t count);
};

void ValuePoses::Parts::make(std::size_t count) {
    const auto n = static_cast<Eigen::Index>(count);
    inputs.setZero(static_cast<Eigen::Index>(size), n);
    for (const auto& [key, value] : poseInputs) {
        inputs(key.second, key.first) = value;
    }
    Eigen::MatrixXf values = Eigen::MatrixXf::Zero(n, n); // one row for each pose
    for (const auto& [key, value] : poseValues) {
        values(key.first, key.second) = value;
    }
    Eigen::MatrixXf pairs(n, n);
    for (Eigen::Index j = 0; j < n; ++j) {
        measure(inputs.col(j));
        pairs.col(j) = distances;
    }
    radius = pairs.mean(); // over all pairs, each pose with itself included
    const Eigen::MatrixXf kernels = pairs.unaryExpr([this](float r) { return weightDriver__IMPL__rbf(r, radius); });
    // No test of invertibility, on purpose: equal poses give infinities or NaN, unlike the transform-driven mode.
    coefficients = kernels.inverse() * values;
}

ValuePoses::ValuePoses() : parts_(std::make_unique<Parts>()) {}
ValuePoses::~ValuePoses() = default;

void ValuePoses::weigh(const svec<float, 16>& input, const PoseElements& poseInputs, const PoseElements& poseValues,
                       svec<float, 16>& result) {
    const std::size_t inputCount = poseCountOf(poseInputs);
    const std::size_t valueCount = poseCountOf(poseValues);
    const std::size_t count = std::max(inputCount, valueCount);
    const char* largest = inputCount < valueCount ? "pose values" : "pose inputs";
    requireWeightDriverSize(largest, count, std::max(count, input.size()),
                            input.size() + poseInputs.size() + poseValues.size());
    requireElements("pose inputs", poseInputs, input.size(), "the input");
    requireElements("pose values", poseValues, count, "the list of poses");
    result.assign(count, 0.0f);
    if (count == 0) {
        return;
    }
    Parts& parts = *parts_;
    if (!parts.isMade || parts.size != input.size() || !isSame(parts.poseInputs, poseInputs) ||
        !isSame(parts.poseValues, poseValues)) {
        parts.isMade = false;
        parts.size = input.size();
        parts.poseInputs = poseInputs;
        parts.poseValues = poseValues;
        parts.make(count);
        parts.isMade = true;
    }
    parts.measure(Eigen::Map<const Eigen::VectorXf>(input.data(), static_cast<Eigen::Index>(input.size())));
    parts.kernel =
        parts.distances.unaryExpr([radius = parts.radius](float r) { return weightDriver__IMPL__rbf(r, radius); });
#ifndef __clang_analyzer__ // which takes the kernel's numbers for unset ones
    Eigen::Map<Eigen::VectorXf>(result.data(), static_cast<Eigen::Index>(count)).noalias() =
        parts.coefficients.transpose() * parts.kernel;
#endif
}

svec<float, 16> weightDriverPoses(int, int, svec<float, 16> input, PoseElements poseInputs, PoseElements poseValues) {
    svec<float, 16> result;
    ValuePoses().weigh(input, poseInputs, poseValues, result);
    return result;
}

} // namespace zent
