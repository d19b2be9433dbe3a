#include "zent/proxies/WorldMatrix.h"

#include "zent/nodes/worldMatrix.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyWorldMatrix::mayaResult(const std::vector<Port>& ports) const {
    return results(output("worldMatrix[0]", result<mat4>(ports, 0)));
}

json ProxyWorldMatrix::zentResult(const Arguments& args) const {
    return results(output(call<worldMatrix>(args)));
}

} // namespace zent
