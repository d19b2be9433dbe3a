#include "zent/proxies/AddDoubleLinear.h"

#include "zent/nodes/addDoubleLinear.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyAddDoubleLinear::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<float>(ports, 0)));
}

json ProxyAddDoubleLinear::zentResult(const Arguments& args) const {
    return results(output(call<addDoubleLinear>(args)));
}

} // namespace zent
