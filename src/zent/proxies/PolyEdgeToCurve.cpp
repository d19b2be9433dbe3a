#include "zent/proxies/PolyEdgeToCurve.h"

#include "zent/nodes/polyEdgeToCurve.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPolyEdgeToCurve::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputcurve", result<Curve>(ports, 0))); // the plug's own name, with a small c
}

json ProxyPolyEdgeToCurve::zentResult(const Arguments& args) const {
    return results(output(call<polyEdgeToCurve>(args)));
}

} // namespace zent
