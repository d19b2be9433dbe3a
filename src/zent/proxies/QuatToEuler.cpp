#include "zent/proxies/QuatToEuler.h"

#include "zent/math/rotation.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyQuatToEuler::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputRotate", result<Euler>(ports, 0)));
}

json ProxyQuatToEuler::zentResult(const Arguments& args) const {
    return results(output(Euler{call<quatToEuler>(args)}));
}

} // namespace zent
