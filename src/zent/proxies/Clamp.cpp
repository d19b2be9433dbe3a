#include "zent/proxies/Clamp.h"

#include "zent/nodes/clamp.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyClamp::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputR", result<float>(ports, 0)));
}

json ProxyClamp::zentResult(const Arguments& args) const {
    return results(output(call<clamp>(args)));
}

} // namespace zent
