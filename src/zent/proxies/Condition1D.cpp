#include "zent/nodes/condition.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyCondition1D : public Plain<condition1D> {
public:
    ProxyCondition1D() : Plain("condition1D", "outColorR") {}
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
};
template Method method<ProxyCondition1D>();

json ProxyCondition1D::closure(const Arguments& args, const std::vector<Port>& /*ports*/) const {
    return nodeReport("condition", results(input<float>("firstTerm", args, 0), input<float>("secondTerm", args, 1),
                                           input<float>("colorIfTrueR", args, 2),
                                           input<float>("colorIfFalseR", args, 3), input<int>("operation", args, 4)));
}

} // namespace zent
