#pragma once

#include "zent/math/types.h"

namespace zent {

/// local times parent in Maya's row order: the local matrix acts on a point first.
mat4 worldMatrix(mat4 const& parent, mat4 local);

} // namespace zent
