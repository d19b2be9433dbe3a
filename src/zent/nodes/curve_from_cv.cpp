#include "zent/nodes/curve_from_cv.h"

#include "zent/geometry/shapes.h"
#include "zent/geometry/transform.h"
#include "zent/math/require.h"

namespace zent {

void IMPL_curve_from_cv(const Curve& curve, const std::map<unsigned int, vec3>& cv, Curve& result) {
    result = curve;
    setTransformAndInverse(result, matrixOf(curve));
    std::size_t position = 0;
    for (const auto& [index, point] : cv) {
        requireIndex("curve_from_cv: control point", position++, index, result.cv.size(), "the curve");
        writePoint(result, index, point);
    }
}

Curve curve_from_cv(const Curve& curve, const std::map<unsigned int, vec3>& cv) {
    Curve result;
    IMPL_curve_from_cv(curve, cv, result);
    return result;
}

} // namespace zent
