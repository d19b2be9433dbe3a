#include "zent/nodes/pointOnCurveInfo.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/shapes.h"

namespace zent {

vec3 pointOnCurveInfo(const Curve& curve, float parameter, bool percentage) {
    requireEvaluable(curve, "pointOnCurveInfo: curve");
    if (percentage) {
        parameter *= curve.domainEnd(); // deliberately the end alone, whatever the domain's start
    }
    return toWorld(curve, curve.localPoint(parameter));
}

} // namespace zent
