#include "zent/proxies/UnitConversion1D.h"

#include "zent/nodes/unitConversion.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyUnitConversion1D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<float>(ports, 0)));
}

json ProxyUnitConversion1D::zentResult(const Arguments& args) const {
    return results(output(call<unitConversion1D>(args)));
}

} // namespace zent
