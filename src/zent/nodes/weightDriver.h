#pragma once

#include "zent/math/types.h"

#include <cstddef>

/// What the weight driver nodes share.
namespace zent {

/// The kernel of the pose interpolators, exp(-r / radius^2); a radius of 0 counts as 1. The distance enters to the
/// first power and the radius squared.
float weightDriver__IMPL__rbf(float r, float radius);

/// atan2 in radians, wrapped by half a turn above a quarter turn, and not below minus a quarter turn.
float weightDriver__IMPL__atan2(float y, float x);

/// The twist of a rotation about one of its axes, in radians: 1 is y, 2 is z, anything else x.
float weightDriver__IMPL__twistAngle(quat q, int axis);

/// A dense matrix of an interpolator may have 2^22 entries (16 MiB, as for 2,048 poses), and 1,024 more for each of the
/// `given` numbers and matrices that it is made from; more is an error that names the list that asks for it. So a few
/// entries cannot ask for much memory, and poses that are all given have theirs.
void requireWeightDriverSize(const char* list, std::size_t rows, std::size_t columns, std::size_t given);

} // namespace zent
