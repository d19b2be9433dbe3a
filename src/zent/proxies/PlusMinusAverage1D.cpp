#include "zent/proxies/PlusMinusAverage1D.h"

#include "zent/nodes/plusMinusAverage.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPlusMinusAverage1D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output1D", result<float>(ports, 0)));
}

json ProxyPlusMinusAverage1D::zentResult(const Arguments& args) const {
    return results(output(call<plusMinusAverage1D>(args)));
}

} // namespace zent
