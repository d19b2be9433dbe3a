#pragma once

#include "zent/math/types.h"

#include <glm/matrix.hpp>

namespace zent {

/// Keeps a matrix as a record does: the linear part and the translation, last row dropped.
template <class Record>
void setTransform(Record& record, const mat4& matrix) {
    record.matrixLinear = mat3(matrix);
    record.translation = vec3(matrix[3]);
}

/// The same, with the inverse: of the whole matrix, before its last row is dropped.
template <class Record>
void setTransformAndInverse(Record& record, const mat4& matrix) {
    setTransform(record, matrix);
    const mat4 inverse = glm::inverse(matrix);
    record.inverseLinear = mat3(inverse);
    record.inverseTranslation = vec3(inverse[3]);
}

} // namespace zent
