#pragma once

#include "zent/geometry/Surface.h"

namespace zent {

/// The surface under another object-to-world matrix. The control points stay as they are.
Surface worldSurface(Surface surface, const mat4& matrix);

} // namespace zent
