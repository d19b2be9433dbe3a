#include "zent/proxies/PlusMinusAverage2D.h"

#include "zent/nodes/plusMinusAverage.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPlusMinusAverage2D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output2D", vec2(result<vec3>(ports, 0))));
}

json ProxyPlusMinusAverage2D::zentResult(const Arguments& args) const {
    return results(output(call<plusMinusAverage2D>(args)));
}

} // namespace zent
