#include "zent/proxies/Joint.h"

#include "zent/nodes/joint.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyJoint::mayaResult(const std::vector<Port>& ports) const {
    return results(output("matrix", result<mat4>(ports, 0)));
}

json ProxyJoint::zentResult(const Arguments& args) const {
    return results(output(call<joint>(args)));
}

} // namespace zent
