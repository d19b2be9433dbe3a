#pragma once

#include "zent/math/types.h"

#include <map>
#include <memory>
#include <utility>

namespace zent {

/// A value by pose and element.
using PoseElements = std::map<std::pair<unsigned int, unsigned int>, float>;

/// The generic pose interpolator: at the input of pose i the result is the values of pose i, and in between it goes by
/// a radial basis function whose width is the mean distance of the poses. Neither clamped nor normalised.
///
/// The two ints have no effect. Both maps hold values by (pose, element), entries that no key names being 0; there are
/// as many poses as the largest pose index tells, and as many results as poses. Two equal poses give infinities or NaN:
/// the kernel is not tested. Throws std::runtime_error for an element of a pose input beyond the input, for an element
/// of a pose value beyond the number of poses, and for matrices of more than 2^22 entries and 1,024 for each number
/// given.
svec<float, 16> weightDriverPoses(int, int, svec<float, 16> input, PoseElements poseInputs, PoseElements poseValues);

/// The same for many inputs: what the poses alone give is made again where they change, in the same room.
class ValuePoses {
public:
    ValuePoses();
    ~ValuePoses();
    void weigh(const svec<float, 16>& input, const PoseElements& poseInputs, const PoseElements& poseValues,
               svec<float, 16>& result);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace zent
