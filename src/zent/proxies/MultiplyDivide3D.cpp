#include "zent/proxies/MultiplyDivide3D.h"

#include "zent/nodes/multiplyDivide.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyMultiplyDivide3D::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<vec3>(ports, 0)));
}

json ProxyMultiplyDivide3D::zentResult(const Arguments& args) const {
    return results(output(call<multiplyDivide3D>(args)));
}

} // namespace zent
