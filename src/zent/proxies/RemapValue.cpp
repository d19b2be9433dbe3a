#include "zent/proxies/RemapValue.h"

#include "zent/nodes/remapValue.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyRemapValue::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outValue", result<float>(ports, 0)));
}

json ProxyRemapValue::zentResult(const Arguments& args) const {
    return results(output(call<remapValue>(args)));
}

} // namespace zent
