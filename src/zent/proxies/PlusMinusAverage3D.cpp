#include "zent/proxies/PlusMinusAverage3D.h"

#include "zent/nodes/plusMinusAverage.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPlusMinusAverage3D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output3D", result<vec3>(ports, 0)));
}

json ProxyPlusMinusAverage3D::zentResult(const Arguments& args) const {
    return results(output(call<plusMinusAverage3D>(args)));
}

} // namespace zent
