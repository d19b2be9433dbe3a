#include "zent/proxies/MultiplyDivide1D.h"

#include "zent/nodes/multiplyDivide.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyMultiplyDivide1D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputX", result<float>(ports, 0)));
}

json ProxyMultiplyDivide1D::zentResult(const Arguments& args) const {
    return results(output(call<multiplyDivide1D>(args)));
}

json ProxyMultiplyDivide1D::closure(const Arguments& args, const std::vector<Port>& /*ports*/) const {
    return nodeReport("multiplyDivide", results(input<float>("input1X", args, 0), input<float>("input2X", args, 1),
                                                input<int>("operation", args, 2)));
}

} // namespace zent
