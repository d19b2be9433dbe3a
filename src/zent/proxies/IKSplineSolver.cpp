#include "zent/proxies/IKSplineSolver.h"

#include "zent/nodes/ikSplineSolver.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyIKSplineSolver::mayaResult(const std::vector<Port>& ports) const {
    return results(typedValue("rotate", "Euler[]", degrees(result<std::vector<vec3>>(ports, 0))),
                   output("translate", result<vec3>(ports, 1)));
}

json ProxyIKSplineSolver::zentResult(const Arguments& args) const {
    const SplineChain chain = call<ikSplineSolver>(args);
    return results(typedValue("Euler[]", degrees(chain.rotates)), output(chain.rootTranslate));
}

json ProxyIKSplineSolver::degrees(const std::vector<vec3>& rotates) const {
    json::array_t array;
    for (const vec3& rotate : rotates) {
        array.push_back(std::move(eulerResult(rotate)["value"]));
    }
    return json(std::move(array));
}

} // namespace zent
