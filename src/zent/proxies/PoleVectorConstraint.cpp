#include "zent/proxies/PoleVectorConstraint.h"

#include "zent/nodes/poleVectorConstraint.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPoleVectorConstraint::mayaResult(const std::vector<Port>& ports) const {
    return results(output("constraintTranslate", result<vec3>(ports, 0)));
}

json ProxyPoleVectorConstraint::zentResult(const Arguments& args) const {
    return results(output(call<poleVectorConstraint>(args)));
}

} // namespace zent
