#include "zent/proxies/WeightDriverDrivers.h"

#include "zent/nodes/weightDriverDrivers.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyWeightDriverDrivers::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<svec<float, 16>>(ports, 0)));
}

json ProxyWeightDriverDrivers::zentResult(const Arguments& args) const {
    return results(output(call<weightDriverDrivers>(args)));
}

} // namespace zent
