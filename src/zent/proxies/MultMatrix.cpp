#include "zent/proxies/MultMatrix.h"

#include "zent/nodes/multMatrix.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyMultMatrix::mayaResult(const std::vector<Port>& ports) const {
    return results(output("matrixSum", result<mat4>(ports, 0)));
}

json ProxyMultMatrix::zentResult(const Arguments& args) const {
    return results(output(call<multMatrix>(args)));
}

} // namespace zent
