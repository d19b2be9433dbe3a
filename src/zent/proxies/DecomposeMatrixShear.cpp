#include "zent/proxies/DecomposeMatrixShear.h"

#include "zent/math/rotation.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyDecomposeMatrixShear::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputShear", result<vec3>(ports, 0)));
}

json ProxyDecomposeMatrixShear::zentResult(const Arguments& args) const {
    return results(output(call<decomposeMatrixShear>(args)));
}

} // namespace zent
