#include "zent/nodes/inverseMatrix.h"

#include <glm/matrix.hpp>

namespace zent {

mat4 inverseMatrix(mat4 const& m) {
    return glm::inverse(m);
}

mat4 inverseLocal(mat4 const& m) {
    return inverseMatrix(m);
}

mat4 inverseWorld(mat4 const& m) {
    return inverseMatrix(m);
}

} // namespace zent
