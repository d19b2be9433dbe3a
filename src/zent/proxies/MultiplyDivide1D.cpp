#include "zent/nodes/multiplyDivide.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyMultiplyDivide1D : public Plain<multiplyDivide1D> {
public:
    ProxyMultiplyDivide1D() : Plain("multiplyDivide1D", "outputX") {}
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
};
template Method method<ProxyMultiplyDivide1D>();

json ProxyMultiplyDivide1D::closure(const Arguments& args, const std::vector<Port>& /*ports*/) const {
    return nodeReport("multiplyDivide", results(input<float>("input1X", args, 0), input<float>("input2X", args, 1),
                                                input<int>("operation", args, 2)));
}

} // namespace zent
