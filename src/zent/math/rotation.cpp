#include "zent/math/rotation.h"

#include <glm/gtc/quaternion.hpp>
#include <glm/matrix.hpp>

#include <array>
#include <limits>

namespace zent {
namespace {

/// The axes of a rotate order, the one that acts first on a point in front. An odd order is the even one seen in a
/// mirror: all its sines change sign.
template <int First, int Middle, int Last>
struct Axes {
    static constexpr int kFirst = First;
    static constexpr int kMiddle = Middle;
    static constexpr int kLast = Last;
    static constexpr float kSign = (First + 1) % 3 == Middle ? 1.0f : -1.0f;
};

/// What `function` gives for the axes of an order, as a type, so that each component that it takes is known beforehand;
/// `otherwise` for an order outside 0 to 5.
template <class Result, class Function>
Result withAxes(RotateOrder order, Result const& otherwise, Function&& function) {
    switch (order) {
    case kRotateXYZ:
        return function(Axes<0, 1, 2>());
    case kRotateYZX:
        return function(Axes<1, 2, 0>());
    case kRotateZXY:
        return function(Axes<2, 0, 1>());
    case kRotateXZY:
        return function(Axes<0, 2, 1>());
    case kRotateYXZ:
        return function(Axes<1, 0, 2>());
    case kRotateZYX:
        return function(Axes<2, 1, 0>());
    default:
        return otherwise;
    }
}

constexpr float kMinDeterminant = 0.001f;

constexpr double kInverseTurn = 0.15915494309189535;
constexpr double kTurn = 6.283185307179586;

// Formed in double: whether a float angle lies beyond pi decides the arm.
float oppositeOuterAngle(float angle) {
    const double a = angle;
    return static_cast<float>(a + (a > kPi ? -kPi : kPi));
}

float oppositeMiddleAngle(float angle) {
    const double a = angle;
    return static_cast<float>((a < -kPi ? -kPi : kPi) - a);
}

float wrapTowards(float angle, float reference) {
    const float difference = reference - angle;
    const double turns = std::floor(static_cast<double>(difference) * kInverseTurn + 0.5);
    return static_cast<float>(static_cast<double>(angle) + turns * kTurn);
}

vec3 wrapTowards(vec3 angles, vec3 reference) {
    return {wrapTowards(angles.x, reference.x), wrapTowards(angles.y, reference.y), wrapTowards(angles.z, reference.z)};
}

float absoluteDistance(vec3 a, vec3 b) {
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z);
}

/// The rows of a matrix made orthonormal, with what was taken out. `lengths` are positive; `overlap` is (a, b, c): row
/// 1 along row 0, row 2 along row 0, row 2 along row 1.
struct GramSchmidt {
    mat3 rows;
    vec3 lengths;
    vec3 overlap;
};

GramSchmidt orthonormalRows(mat4 const& m) {
    const vec3 row0(m[0]);
    const float length0 = guardedLength(row0);
    const vec3 unit0 = row0 / length0;

    const vec3 row1(m[1]);
    const float along10 = glm::dot(unit0, row1);
    const vec3 rest1 = row1 - along10 * unit0;
    const float length1 = guardedLength(rest1);
    const vec3 unit1 = rest1 / length1;

    const vec3 row2(m[2]);
    const float along20 = glm::dot(unit0, row2);
    vec3 rest2 = row2 - along20 * unit0;
    const float along21 = glm::dot(unit1, rest2);
    rest2 -= along21 * unit1;
    const float length2 = guardedLength(rest2);

    return {mat3(unit0, unit1, rest2 / length2), vec3(length0, length1, length2), vec3(along10, along20, along21)};
}

// Deliberately the four by four determinant against 0.001 and not against 0: a small uniform scale counts as mirrored.
bool countsAsMirrored(mat4 const& m) {
    return glm::determinant(m) < kMinDeterminant;
}

/// The quaternion of an orthonormal matrix by its largest term (Shoemake, "Animating Rotation with Quaternion Curves").
quat quatOfRows(mat3 const& r) {
    const float trace = r[0][0] + r[1][1] + r[2][2];
    if (trace > 0.0f) {
        const float s = std::sqrt(trace + 1.0f);
        const float f = 0.5f / s;
        return {0.5f * s, (r[1][2] - r[2][1]) * f, (r[2][0] - r[0][2]) * f, (r[0][1] - r[1][0]) * f};
    }
    constexpr std::array<int, 3> kNext = {1, 2, 0};
    int i = r[0][0] < r[1][1] ? 1 : 0;
    if (r[2][2] > r[i][i]) {
        i = 2;
    }
    const int j = kNext[static_cast<std::size_t>(i)];
    const int k = kNext[static_cast<std::size_t>(j)];
    const float s = std::sqrt((r[i][i] + 1.0f) - (r[j][j] + r[k][k]));
    const float f = 0.5f / s;
    quat q(0.0f, 0.0f, 0.0f, 0.0f);
    q[i] = 0.5f * s;
    q[j] = (r[i][j] + r[j][i]) * f;
    q[k] = (r[i][k] + r[k][i]) * f;
    q.w = (r[j][k] - r[k][j]) * f;
    return q;
}

vec4 components(quat q) {
    return {q.x, q.y, q.z, q.w};
}

float quatDot(quat a, quat b) {
    return (a.w * b.w + a.x * b.x) + (a.y * b.y + a.z * b.z);
}

/// Float bits 0x358637BD, and the distance of 1 to the next float.
constexpr float kOpposite = 1e-6f;
constexpr float kEpsilon = std::numeric_limits<float>::epsilon();
constexpr float kCosineOfHalf = 0.87758255f;

} // namespace

mat4 eulerRotateMatrix(vec3 angles, RotateOrder order) {
    return withAxes(order, mat4(0.0f), [&](auto axes) {
        constexpr int i = axes.kFirst, j = axes.kMiddle, k = axes.kLast;
        const float si = axes.kSign * std::sin(angles[i]), ci = std::cos(angles[i]);
        const float sj = axes.kSign * std::sin(angles[j]), cj = std::cos(angles[j]);
        const float sk = axes.kSign * std::sin(angles[k]), ck = std::cos(angles[k]);

        mat4 m(1.0f);
        m[i][i] = cj * ck;
        m[i][j] = cj * sk;
        m[i][k] = -sj;
        m[j][i] = si * sj * ck - ci * sk;
        m[j][j] = si * sj * sk + ci * ck;
        m[j][k] = si * cj;
        m[k][i] = ci * sj * ck + si * sk;
        m[k][j] = ci * sj * sk - si * ck;
        m[k][k] = ci * cj;
        return m;
    });
}

quat eulerToQuat(vec3 angles, RotateOrder order) {
    return withAxes(order, quat(0.0f, 0.0f, 0.0f, 0.0f), [&](auto axes) {
        constexpr int i = axes.kFirst, j = axes.kMiddle, k = axes.kLast;
        const vec3 half = 0.5f * angles;
        const float si = axes.kSign * std::sin(half[i]), ci = std::cos(half[i]);
        const float sj = axes.kSign * std::sin(half[j]), cj = std::cos(half[j]);
        const float sk = axes.kSign * std::sin(half[k]), ck = std::cos(half[k]);

        quat q(ci * cj * ck + si * sj * sk, vec3(0.0f));
        q[i] = axes.kSign * (si * cj * ck - ci * sj * sk);
        q[j] = axes.kSign * (ci * sj * ck + si * cj * sk);
        q[k] = axes.kSign * (ci * cj * sk - si * sj * ck);
        return q;
    });
}

template <class T>
std::tuple<bool, vec3, vec3> get_both_euler(T const& m, RotateOrder order) {
    using Solutions = std::tuple<bool, vec3, vec3>;
    return withAxes(order, Solutions(false, vec3(0.0f), vec3(0.0f)), [&](auto axes) {
        constexpr int i = axes.kFirst, j = axes.kMiddle, k = axes.kLast;
        constexpr float sign = axes.kSign;
        vec3 primary(0.0f), alternative(0.0f);
        const float c2 = m[i][i] * m[i][i] + m[i][j] * m[i][j];
        primary[j] = std::atan2(-sign * m[i][k], guardedSqrt(c2));

        // Deliberate: a squared length of exactly the threshold is gimbal lock in every order but zyx. NaN is, in all
        // six.
        const bool isRegular = order == kRotateZYX ? c2 >= kThreshold : c2 > kThreshold;
        if (!isRegular) {
            primary[i] = std::atan2(-sign * m[k][j], m[j][j]);
            return Solutions(false, primary, alternative);
        }
        primary[i] = std::atan2(sign * m[j][k], m[k][k]);
        primary[k] = std::atan2(sign * m[i][j], m[i][i]);
        alternative[i] = oppositeOuterAngle(primary[i]);
        alternative[j] = oppositeMiddleAngle(primary[j]);
        alternative[k] = oppositeOuterAngle(primary[k]);
        return Solutions(true, primary, alternative);
    });
}

template std::tuple<bool, vec3, vec3> get_both_euler<mat3>(mat3 const&, RotateOrder);
template std::tuple<bool, vec3, vec3> get_both_euler<mat4>(mat4 const&, RotateOrder);

vec3 smallerEuler(std::tuple<bool, vec3, vec3> const& solutions) {
    const auto& [hasAlternative, primary, alternative] = solutions;
    const auto absoluteSum = [](vec3 a) { return std::abs(a.y) + std::abs(a.x) + std::abs(a.z); };
    return hasAlternative && absoluteSum(primary) > absoluteSum(alternative) ? alternative : primary;
}

vec3 eulerAngles(quat q, RotateOrder order) {
    return smallerEuler(get_both_euler(glm::mat3_cast(q), order));
}

vec3 eulerAngles(quat q, RotateOrder order, vec3 reference) {
    const auto [hasAlternative, first, second] = get_both_euler(glm::mat3_cast(q), order);
    const vec3 primary = wrapTowards(first, reference);
    if (!hasAlternative) {
        return primary;
    }
    const vec3 alternative = wrapTowards(second, reference);
    return absoluteDistance(alternative, reference) < absoluteDistance(primary, reference) ? alternative : primary;
}

vec3 quatToEuler(vec4 q) {
    const float length = guardedSqrt(glm::dot(q, q));
    const vec4 unit = length <= 0.0f ? vec4(0.0f, 0.0f, 0.0f, 1.0f) : q * (1.0f / length);
    return eulerAngles(quat(unit.w, unit.x, unit.y, unit.z), kRotateXYZ);
}

std::pair<vec3, vec3> get_scale_and_shear(mat4 const& m) {
    const GramSchmidt parts = orthonormalRows(m);
    const vec3 shear = parts.overlap / vec3(parts.lengths.y, parts.lengths.z, parts.lengths.z);
    vec3 scale = parts.lengths;
    // Only z, where `get_orient` negates all of its rows.
    if (countsAsMirrored(m)) {
        scale.z = -scale.z;
    }
    return {scale, shear};
}

quat get_orient(mat4 const& m) {
    mat3 rows = orthonormalRows(m).rows;
    if (countsAsMirrored(m)) {
        rows = -rows;
    }
    return quatOfRows(rows);
}

vec3 decomposeMatrixTranslate(mat4 const& m) {
    return vec3(m[3]);
}

vec3 decomposeMatrixRotate(mat4 const& m) {
    return smallerEuler(get_both_euler(m, kRotateXYZ));
}

vec3 decomposeMatrixScale(mat4 const& m) {
    return get_scale_and_shear(m).first;
}

vec3 decomposeMatrixShear(mat4 const& m) {
    return get_scale_and_shear(m).second;
}

quat decomposeMatrixQuat(mat4 const& m) {
    return get_orient(m);
}

Slerp::Slerp(quat a, quat b, int spin, bool flip_spin) : a_(a), b_(b) {
    float c = glm::dot(components(a), components(b));
    if (c < 0.0f) {
        c = -c;
        b_ = -b;
        if (flip_spin) {
            spin = spin == 0 ? -1 : 0;
        }
    }
    const float s = 1.0f - c;
    linear_ = !(s > kThreshold);
    if (!linear_) {
        omega_ = std::acos(glm::clamp(c, -1.0f, 1.0f));
        swept_ = static_cast<float>(static_cast<double>(omega_) + spin * kPi);
        // The divisor stays sin(omega), whatever the spin.
        inverseSine_ = 1.0f / std::sin(omega_);
    }
}

quat Slerp::operator()(float t) const {
    const auto [ofA, ofB] = shares(t);
    return ofA * a_ + ofB * b_;
}

quat core_slerp(quat a, quat b, float t, int spin, bool flip_spin) {
    return Slerp(a, b, spin, flip_spin)(t);
}

quat normalizeOrIdentity(quat q) {
    const float length = std::sqrt(quatDot(q, q));
    if (length <= 0.0f) {
        return {1.0f, 0.0f, 0.0f, 0.0f};
    }
    const float inverse = 1.0f / length;
    return {q.w * inverse, q.x * inverse, q.y * inverse, q.z * inverse};
}

quat turnBetween(vec3 from, vec3 to) {
    const float lengths = std::sqrt(glm::dot(from, from) * glm::dot(to, to));
    const float w = lengths + glm::dot(from, to);
    if (w < kOpposite * lengths) {
        const vec3 across = std::abs(from.x) > std::abs(from.z) ? vec3(-from.y, from.x, 0.0f) //
                                                                : vec3(0.0f, -from.z, from.y);
        return {0.0f, across};
    }
    return {w, glm::cross(from, to)};
}

quat rotationBetween(vec3 from, vec3 to) {
    return normalizeOrIdentity(turnBetween(from, to));
}

quat rotationBetweenUnits(vec3 from, vec3 to) {
    const float cosine = glm::dot(from, to);
    if (cosine >= 1.0f - kEpsilon) {
        return {1.0f, 0.0f, 0.0f, 0.0f};
    }
    if (cosine < -1.0f + kEpsilon) {
        vec3 across(-from.y, from.x, 0.0f);
        if (glm::dot(across, across) < kEpsilon) {
            across = vec3(0.0f, -from.z, from.y);
        }
        return glm::angleAxis(static_cast<float>(kPi), glm::normalize(across));
    }
    const float s = std::sqrt((1.0f + cosine) * 2.0f);
    return {s * 0.5f, glm::cross(from, to) * (1.0f / s)};
}

quat slerpStep(quat a, quat b, float t) {
    float cosine = quatDot(a, b);
    if (cosine < 0.0f) {
        b = -b;
        cosine = -cosine;
    }
    if (cosine > 1.0f - kEpsilon) {
        return a * (1.0f - t) + b * t;
    }
    const float omega = std::acos(cosine);
    return (std::sin((1.0f - t) * omega) * a + std::sin(t * omega) * b) / std::sin(omega);
}

float rotationAngle(quat q) {
    if (std::abs(q.w) > kCosineOfHalf) {
        return std::asin(std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z)) * 2.0f;
    }
    return std::acos(q.w) * 2.0f;
}

vec3 rotationAxis(quat q) {
    const float squaredSine = 1.0f - q.w * q.w;
    if (squaredSine <= 0.0f) {
        return {0.0f, 0.0f, 1.0f};
    }
    return vec3(q.x, q.y, q.z) * (1.0f / std::sqrt(squaredSine));
}

mat4 composeMatrix(vec3 translate, vec3 rotate, int order, vec3 scale) {
    const mat4 rotation = eulerRotateMatrix(rotate, static_cast<RotateOrder>(order));
    mat4 m(0.0f);
    for (int i = 0; i < 4; ++i) {
        // The general form: with a zero rotation (an order out of range) row 3 is zero, too.
        const float w = rotation[i].w;
        m[i] = vec4(vec3(rotation[i]) + w * translate, w);
    }
    return scaledRows(m, scale);
}

} // namespace zent
