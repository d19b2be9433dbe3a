#include "zent/proxies/DecomposeMatrixQuat.h"

#include "zent/math/rotation.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyDecomposeMatrixQuat::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputQuat", result<vec4>(ports, 0)));
}

json ProxyDecomposeMatrixQuat::zentResult(const Arguments& args) const {
    return results(output(call<decomposeMatrixQuat>(args)));
}

} // namespace zent
