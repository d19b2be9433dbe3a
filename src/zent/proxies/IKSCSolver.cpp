#include "zent/proxies/IKSCSolver.h"

#include "zent/nodes/ikSCsolver.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyIKSCSolver::mayaResult(const std::vector<Port>& ports) const {
    return results(output("rotate", result<std::vector<vec3>>(ports, 0)));
}

json ProxyIKSCSolver::zentResult(const Arguments& args) const {
    return results(output(std::array<vec3, 1>{call<ikSCsolver>(args)}));
}

} // namespace zent
