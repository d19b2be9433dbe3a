#include "zent/nodes/worldMatrix.h"

namespace zent {

mat4 worldMatrix(mat4 const& parent, mat4 local) {
    return parent * local;
}

} // namespace zent
