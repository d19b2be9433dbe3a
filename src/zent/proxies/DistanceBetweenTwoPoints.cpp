#include "zent/proxies/DistanceBetweenTwoPoints.h"

#include "zent/nodes/distanceBetween.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyDistanceBetweenTwoPoints::mayaResult(const std::vector<Port>& ports) const {
    return results(output("distance", result<float>(ports, 0)));
}

json ProxyDistanceBetweenTwoPoints::zentResult(const Arguments& args) const {
    return results(output(call<distanceBetweenTwoPoints>(args)));
}

} // namespace zent
