#include "zent/nodes/worldSurface.h"

#include <utility>

namespace zent {

Surface worldSurface(Surface surface, const mat4& matrix) {
    surface.setMatrix(matrix);
    return surface;
}

} // namespace zent
