#include "zent/proxies/CurveFromMeshEdge.h"

#include "zent/Binding.h"
#include "zent/nodes/polyEdgeToCurve.h"

namespace zent {

json ProxyCurveFromMeshEdge::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputCurve", result<Curve>(ports, 0)));
}

json ProxyCurveFromMeshEdge::zentResult(const Arguments& args) const {
    return results(output(call<curveFromMeshEdge>(args)));
}

} // namespace zent
