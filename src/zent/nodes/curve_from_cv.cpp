#include "zent/nodes/curve_from_cv.h"

#include "zent/geometry/shapes.h"
#include "zent/math/require.h"

namespace zent {

Curve curve_from_cv(const Curve& curve, const std::map<unsigned int, vec3>& cv) {
    Curve result(curve.degree, curve.form, curve.cv, curve.knots, matrixOf(curve));
    std::size_t position = 0;
    for (const auto& [index, point] : cv) {
        requireIndex("curve_from_cv: control point", position++, index, result.cv.size(), "the curve");
        writePoint(result, index, point);
    }
    return result;
}

} // namespace zent
