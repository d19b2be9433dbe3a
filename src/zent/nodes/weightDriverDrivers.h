#pragma once

#include "zent/math/types.h"

#include <memory>

namespace zent {

/// One weight for each pose of the transform-driven interpolator: 1 for the pose at which the driver stands, 0 for the
/// others, and by a radial basis function over direction and twist in between. Neither clamped nor normalised.
///
/// The first two ints have no effect. Twist axis: 1 is y, 2 is z, anything else x; `invert` negates the axis. The
/// driver is seen from the reader, each pose from its own parent, both turned back by the rotation offset (radians). A
/// pose of mode 1 ignores twist. Poses that the kernel cannot tell apart give all zeros. Throws std::runtime_error for
/// fewer parents or modes than poses, and for more than 4,096 poses.
svec<float, 16> weightDriverDrivers(int, int, int twistAxis, bool invert, mat4 driverMatrix, mat4 readerMatrix,
                                    svec<mat4, 16> poseMatrices, svec<mat4, 16> poseParentMatrices,
                                    svec<int, 16> poseModes, vec3 rotationOffset);

/// The same for many drivers: what the poses alone give is made again where they change, in the same room.
class MatrixPoses {
public:
    MatrixPoses();
    ~MatrixPoses();
    void weigh(int twistAxis, bool invert, const mat4& driverMatrix, const mat4& readerMatrix,
               const svec<mat4, 16>& poseMatrices, const svec<mat4, 16>& poseParentMatrices,
               const svec<int, 16>& poseModes, vec3 rotationOffset, svec<float, 16>& result);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace zent
