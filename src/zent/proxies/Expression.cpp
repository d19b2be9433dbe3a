#include "zent/proxies/Expression.h"

#include "zent/expression/expression.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyExpression::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<svec<float, 16>>(ports, 0)));
}

json ProxyExpression::zentResult(const Arguments& args) const {
    return results(output(call<expression>(args)));
}

} // namespace zent
