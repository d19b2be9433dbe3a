#include "zent/proxies/IKRPSolver.h"

#include "zent/nodes/ikRPsolver.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyIKRPSolver::mayaResult(const std::vector<Port>& ports) const {
    return results(output("rotate", result<static_vector<vec3, 2>>(ports, 0)));
}

json ProxyIKRPSolver::zentResult(const Arguments& args) const {
    return results(output(call<ikRPsolver>(args)));
}

} // namespace zent
