#include "zent/proxies/SetRange3D.h"

#include "zent/nodes/setRange.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxySetRange3D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outValue", result<vec3>(ports, 0)));
}

json ProxySetRange3D::zentResult(const Arguments& args) const {
    return results(output(call<setRange3D>(args)));
}

} // namespace zent
