#include "zent/proxies/AngleBetweenAngle.h"

#include "zent/nodes/angleBetween.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyAngleBetweenAngle::mayaResult(const std::vector<Port>& ports) const {
    return results(output("angle", result<float>(ports, 0)));
}

json ProxyAngleBetweenAngle::zentResult(const Arguments& args) const {
    return results(output(call<angleBetween__COMPUTE__angle>(args)));
}

} // namespace zent
