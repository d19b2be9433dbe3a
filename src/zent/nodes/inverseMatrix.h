#pragma once

#include "zent/math/types.h"

namespace zent {

/// The inverse of m. A singular matrix gives infinities or NaN.
mat4 inverseMatrix(mat4 const& m);

/// `inverseMatrix`, for a local matrix.
mat4 inverseLocal(mat4 const& m);

/// `inverseMatrix`, for a world matrix.
mat4 inverseWorld(mat4 const& m);

} // namespace zent
