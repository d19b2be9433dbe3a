#include "zent/proxies/Condition1D.h"

#include "zent/nodes/condition.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyCondition1D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outColorR", result<float>(ports, 0)));
}

json ProxyCondition1D::zentResult(const Arguments& args) const {
    return results(output(call<condition1D>(args)));
}

json ProxyCondition1D::closure(const Arguments& args, const std::vector<Port>& /*ports*/) const {
    return nodeReport("condition", results(input<float>("firstTerm", args, 0), input<float>("secondTerm", args, 1),
                                           input<float>("colorIfTrueR", args, 2),
                                           input<float>("colorIfFalseR", args, 3), input<int>("operation", args, 4)));
}

} // namespace zent
