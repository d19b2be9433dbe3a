#pragma once

#include "zent/math/types.h"

#include <tuple>
#include <utility>

namespace zent {

/// Maya's `rotateOrder`. The first letter is the axis that acts first on a point. Carried as any integer: the functions
/// below say what a value of 6 or above gives.
enum RotateOrder : int {
    kRotateXYZ = 0,
    kRotateYZX = 1,
    kRotateZXY = 2,
    kRotateXZY = 3,
    kRotateYXZ = 4,
    kRotateZYX = 5,
};

/// The rotation matrix of three Euler angles (radians), row 3 (0, 0, 0, 1). An order outside 0 to 5 gives the zero
/// matrix.
mat4 eulerRotateMatrix(vec3 angles, RotateOrder order);

/// The same rotation as a quaternion, not normalised. An order outside 0 to 5 gives (0, 0, 0, 0).
quat eulerToQuat(vec3 angles, RotateOrder order);

/// Both Euler solutions of a matrix's upper 3 by 3 block: (has an alternative, primary, alternative), radians.
/// At gimbal lock the flag is false and the alternative zero; so it is, with zero angles, for an order outside 0 to 5.
template <class T>
std::tuple<bool, vec3, vec3> get_both_euler(T const& m, RotateOrder order);
extern template std::tuple<bool, vec3, vec3> get_both_euler<mat3>(mat3 const&, RotateOrder);
extern template std::tuple<bool, vec3, vec3> get_both_euler<mat4>(mat4 const&, RotateOrder);

/// Of the two solutions of `get_both_euler`, the one of the smaller absolute sum; a tie keeps the primary.
vec3 smallerEuler(std::tuple<bool, vec3, vec3> const& solutions);

/// The Euler angles of a quaternion, radians: the solution of the smaller absolute sum.
vec3 eulerAngles(quat q, RotateOrder order);

/// The Euler angles of a quaternion, radians: the solution closest to `reference`, each angle wrapped by whole turns.
vec3 eulerAngles(quat q, RotateOrder order, vec3 reference);

/// The Euler angles (xyz, radians) of a quaternion given as x, y, z, w. It is normalised first; zero is the identity,
/// and NaN in any of the four gives NaN.
vec3 quatToEuler(vec4 q);

/// Scale and shear of a matrix's rows by Gram-Schmidt. z scale is negative where the determinant is below 0.001.
std::pair<vec3, vec3> get_scale_and_shear(mat4 const& m);

/// The orthonormal part of a matrix as a quaternion, not normalised. All of it is negated where the determinant is
/// below 0.001.
quat get_orient(mat4 const& m);

/// Row 3 of a matrix.
vec3 decomposeMatrixTranslate(mat4 const& m);
/// Euler angles (xyz, radians) of the matrix as it stands: scale and shear are not taken out.
vec3 decomposeMatrixRotate(mat4 const& m);
/// The scale of `get_scale_and_shear`.
vec3 decomposeMatrixScale(mat4 const& m);
/// The shear of `get_scale_and_shear`: xy, xz, yz.
vec3 decomposeMatrixShear(mat4 const& m);
/// `get_orient`.
quat decomposeMatrixQuat(mat4 const& m);

/// Spherical interpolation from a to b, for any number of steps: what the two alone decide is worked out once.
class Slerp {
public:
    /// `spin` and `flip_spin` as for `core_slerp`.
    Slerp(quat a, quat b, int spin, bool flip_spin);
    quat operator()(float t) const;

    /// The same as the sum of the ends, each times its share; the end b may have been negated.
    struct Shares {
        float ofA;
        float ofB;
    };
    Shares shares(float t) const {
        if (linear_) {
            return {1.0f - t, t};
        }
        const float g = swept_ * t;
        return {std::sin(omega_ - g) * inverseSine_, std::sin(g) * inverseSine_};
    }
    const quat& b() const { return b_; }

private:
    quat a_;
    quat b_;
    bool linear_;
    float omega_ = 0.0f;
    float swept_ = 0.0f;
    float inverseSine_ = 0.0f;
};

/// Spherical interpolation from a to b by t with `spin` extra half turns. Where the two lie more than a quarter turn
/// apart b is negated, and `flip_spin` then turns a spin of 0 into -1 and any other into 0. The result is not
/// normalised.
quat core_slerp(quat a, quat b, float t, int spin, bool flip_spin);

// Thresholds and tie-breaks of the following are behaviour of the nodes that use them. Each comparison is such that NaN
// is on neither side of it and passes through.

/// A quaternion of length 1; the identity where the length is not greater than 0.
quat normalizeOrIdentity(quat q);

/// The rotation that takes the direction of one vector to that of another, by its half angle and not normalised.
/// Directions that are opposite within 1e-6 make it a half turn about (-y, x, 0) of `from`, or about (0, -z, y) unless
/// x is larger than z.
quat turnBetween(vec3 from, vec3 to);

/// `turnBetween`, normalised.
quat rotationBetween(vec3 from, vec3 to);

/// The rotation between two unit vectors: the identity where their cosine is within 2^-23 of 1, and within that of -1 a
/// half turn about (-y, x, 0) of `from`, or about (0, -z, y) where `from` lies along z.
quat rotationBetweenUnits(vec3 from, vec3 to);

/// Spherical interpolation from a to b by t along the shorter way, linear where the cosine is within 2^-23 of 1. The
/// result is not normalised.
quat slerpStep(quat a, quat b, float t);

/// The angle of a unit quaternion, radians, with the sine's precision where it is small.
float rotationAngle(quat q);

/// The axis of a unit quaternion; z for one without.
vec3 rotationAxis(quat q);

/// Scale, then rotate (radians), then translate. An order outside 0 to 5 gives zero rows and a zero row 3.
mat4 composeMatrix(vec3 translate, vec3 rotate, int order, vec3 scale);

/// Rows 0 to 2, each times its factor.
template <class Matrix>
Matrix scaledRows(Matrix rows, vec3 factors) {
    for (int i = 0; i < 3; ++i) {
        rows[i] *= factors[i];
    }
    return rows;
}

/// A point through a matrix, affine part only: (p, 1) times m in Maya's order.
inline vec3 transformPoint(mat4 const& m, vec3 p) {
    return vec3(m * vec4(p, 1.0f));
}

/// A direction through a matrix: p times the upper 3 by 3 block of m in Maya's order.
inline vec3 transformVector(mat4 const& m, vec3 v) {
    return mat3(m) * v;
}

} // namespace zent
