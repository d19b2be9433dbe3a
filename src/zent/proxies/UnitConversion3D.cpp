#include "zent/proxies/UnitConversion3D.h"

#include "zent/nodes/unitConversion.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyUnitConversion3D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<vec3>(ports, 0)));
}

json ProxyUnitConversion3D::zentResult(const Arguments& args) const {
    return results(output(call<unitConversion3D>(args)));
}

} // namespace zent
