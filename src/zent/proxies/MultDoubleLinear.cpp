#include "zent/proxies/MultDoubleLinear.h"

#include "zent/nodes/multDoubleLinear.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyMultDoubleLinear::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<float>(ports, 0)));
}

json ProxyMultDoubleLinear::zentResult(const Arguments& args) const {
    return results(output(call<multDoubleLinear>(args)));
}

} // namespace zent
