#include "Function.h"

#include "zent/nodes/curve_from_cv.h"
#include "zent/nodes/curveInfo.h"
#include "zent/nodes/intersectCurveSphere.h"
#include "zent/nodes/motionPath.h"
#include "zent/nodes/nearestPointOnCurve.h"
#include "zent/nodes/pointOnCurveInfo.h"
#include "zent/nodes/polyEdgeToCurve.h"

namespace zent::python {

void bindCurves(Functions& functions) {
    functions.add("curveInfo", curveInfo, "inputCurve",
                  "The arc length over the whole domain, world space. A curve that cannot be evaluated raises Error.");
    functions.add("pointOnCurveInfo", pointOnCurveInfo, "inputCurve parameter=0 turnOnPercentage=0",
                  "The point at a parameter, or at a fraction of the domain's end, world space.");
    functions.add("motionPath", motionPath, "geometryPath uValue=0 fractionMode=0",
                  "The point at a parameter, or at a fraction of the arc length, world space.");
    functions.add("nearestPointOnCurve", nearestPointOnCurve, "inputCurve inPosition",
                  "The parameter that is closest to a point, after the world position of the control point whose index "
                  "is its integral\npart. Raises Error where there is none.");
    functions.add("getClosetPointOnCurve", static_cast<float (*)(const Curve&, vec3)>(getClosetPointOnCurve),
                  "inputCurve inPosition",
                  "The parameter of the point that is closest to a point, both in world space.");
    functions.add(
        "curve_from_cv", curve_from_cv, "local controlPoints",
        "The curve with some control points replaced, by index. An index that it does not have raises Error.");
    functions.add("curveFromMeshEdge", curveFromMeshEdge, "inputMesh vertices",
                  "The polyline through vertices of a mesh, in world space.");
    functions.add("polyEdgeToCurve", polyEdgeToCurve, "inputPolymesh vertices degree=3",
                  "The curve through vertices of a mesh, in world space: the polyline for degree 1, else closed where "
                  "the first and the\nlast vertex are the same, and open (degree 3) where they are not.");
    functions.add("polyEdgeToCurveLinear", polyEdgeToCurveLinear, "inputPolymesh vertices",
                  "The polyline through vertices of a mesh.");
    functions.add("polyEdgeToCurvePeriodic", polyEdgeToCurvePeriodic, "inputPolymesh vertices degree=3",
                  "The closed curve through vertices of a mesh, the last of which is the first; degree 1 to 5.");
    functions.add("polyEdgeToCurveOpen", polyEdgeToCurveOpen, "inputPolymesh vertices degree=3",
                  "The open curve of degree 3 through vertices of a mesh.");
    functions.add("curveFromEditPoints", curveFromEditPoints, "degree points",
                  "The open curve of degree 3 through at least two points, with a second derivative of zero at both "
                  "ends.");
    functions.add("intersectCurveSphere1D", intersectCurveSphere1D, "inputCurve center radius",
                  "The parameter of the last crossing of a curve of degree 1 with a sphere, or the domain's end.");
    functions.add("intersectCurveSphere", static_cast<float (*)(const Curve&, vec3, float)>(intersectCurveSphere),
                  "inputCurve center radius", "The parameter at which a curve leaves a sphere, world space.");
}

} // namespace zent::python
