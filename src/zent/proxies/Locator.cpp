#include "zent/proxies/Locator.h"

#include "zent/nodes/locatorWorldPosition.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyLocator::mayaResult(const std::vector<Port>& ports) const {
    return results(output("worldPosition[0]", result<vec3>(ports, 0)));
}

json ProxyLocator::zentResult(const Arguments& args) const {
    return results(output(call<locatorWorldPosition>(args)));
}

} // namespace zent
