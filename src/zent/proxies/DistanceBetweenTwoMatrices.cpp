#include "zent/proxies/DistanceBetweenTwoMatrices.h"

#include "zent/nodes/distanceBetween.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyDistanceBetweenTwoMatrices::mayaResult(const std::vector<Port>& ports) const {
    return results(output("distance", result<float>(ports, 0)));
}

json ProxyDistanceBetweenTwoMatrices::zentResult(const Arguments& args) const {
    return results(output(call<distanceBetweenTwoMatrices>(args)));
}

} // namespace zent
