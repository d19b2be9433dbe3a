#include "zent/proxies/AnimCurve.h"

#include "zent/nodes/animCurve.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyAnimCurve::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<float>(ports, 0)));
}

json ProxyAnimCurve::zentResult(const Arguments& args) const {
    return results(output(call<animCurve>(args)));
}

} // namespace zent
