#include "zent/proxies/CurveFromMeshEdge.h"

#include "zent/nodes/polyEdgeToCurve.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyCurveFromMeshEdge::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputCurve", result<Curve>(ports, 0)));
}

json ProxyCurveFromMeshEdge::zentResult(const Arguments& args) const {
    return results(output(call<curveFromMeshEdge>(args)));
}

} // namespace zent
