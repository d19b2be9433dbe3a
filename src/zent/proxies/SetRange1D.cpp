#include "zent/proxies/SetRange1D.h"

#include "zent/nodes/setRange.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxySetRange1D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outValueX", result<float>(ports, 0)));
}

json ProxySetRange1D::zentResult(const Arguments& args) const {
    return results(output(call<setRange1D>(args)));
}

} // namespace zent
