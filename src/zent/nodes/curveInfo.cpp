#include "zent/nodes/curveInfo.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/shapes.h"
#include "zent/math/require.h"

namespace zent {
namespace {

float polylineLength(const Curve& curve) {
    const std::size_t overlap = curve.form == kFormPeriodic ? 1 : 0;
    requireAtLeast("curveInfo: control points", curve.cv.size(), overlap + 1, "a curve of degree 1");
    const std::size_t count = curve.cv.size() - overlap;
    float length = 0.0f;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        length += guardedLength(toWorld(curve, curve.cv[i + 1]) - toWorld(curve, curve.cv[i]));
    }
    return length;
}

} // namespace

float curveInfo(const Curve& curve) {
    if (curve.degree == 1) {
        return polylineLength(curve);
    }
    requireEvaluable(curve, "curveInfo: curve");
    return curve.arcLength(curve.domainStart(), curve.domainEnd());
}

} // namespace zent
