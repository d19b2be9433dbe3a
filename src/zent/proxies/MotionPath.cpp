#include "zent/proxies/MotionPath.h"

#include "zent/nodes/motionPath.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyMotionPath::mayaResult(const std::vector<Port>& ports) const {
    return results(output("allCoordinates", result<vec3>(ports, 0)));
}

json ProxyMotionPath::zentResult(const Arguments& args) const {
    return results(output(call<motionPath>(args)));
}

} // namespace zent
