#include "zent/proxies/Locator.h"

#include "zent/Binding.h"
#include "zent/nodes/locatorWorldPosition.h"

namespace zent {

json ProxyLocator::mayaResult(const std::vector<Port>& ports) const {
    return results(output("worldPosition[0]", result<vec3>(ports, 0)));
}

json ProxyLocator::zentResult(const Arguments& args) const {
    return results(output(call<locatorWorldPosition>(args)));
}

} // namespace zent
