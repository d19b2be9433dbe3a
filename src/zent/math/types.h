#pragma once

#include <boost/container/small_vector.hpp>
#include <boost/container/static_vector.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/mat3x3.hpp>
#include <glm/mat4x4.hpp>
#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>

#include <cmath>
#include <cstddef>
#include <limits>

/// The value types of every node function: glm's vectors, matrices and quaternions in single precision.
///
/// A `mat4` holds Maya's matrix float for float: `M[i]` is Maya's row i, points are row vectors in Maya's reading and
/// row 3 holds the translation. glm's `A * B` is therefore Maya's product B A, and either way the same factor acts on a
/// point first: B, which stands right in code and left in Maya's row order. Comments tell products in the order of the
/// code, and where they say "Maya's row order", or "a, then b", the other way round. Quaternion products are glm's
/// operator, which applies its right factor first.
namespace zent {

using glm::mat3;
using glm::mat4;
using glm::quat;
using glm::vec2;
using glm::vec3;
using glm::vec4;

/// A list by value that holds N elements without allocation and takes more.
template <class T, std::size_t N>
using svec = boost::container::small_vector<T, N>;
using boost::container::static_vector;

/// The recurring tolerance. Whether a test takes it signed or by magnitude is behaviour of each node.
inline constexpr float kThreshold = 1e-5f;

inline constexpr double kPi = 3.141592653589793;

/// The square root of a sum. One below the smallest normal float counts as 0; NaN passes through.
inline float guardedSqrt(float sum) {
    return std::abs(sum) < std::numeric_limits<float>::min() ? 0.0f : std::sqrt(sum);
}

/// The length of a vector by the guarded root.
inline float guardedLength(vec3 v) {
    return guardedSqrt(glm::dot(v, v));
}

} // namespace zent
