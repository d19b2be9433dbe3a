#pragma once

#include "zent/math/types.h"

namespace zent {

/// The product in[0] in[1] ... in[n-1] in Maya's row order: in[0] acts on a point first. An empty list gives the
/// identity.
mat4 multMatrix(svec<mat4, 8> in);

} // namespace zent
