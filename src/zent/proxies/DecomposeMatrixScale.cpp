#include "zent/proxies/DecomposeMatrixScale.h"

#include "zent/math/rotation.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyDecomposeMatrixScale::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputScale", result<vec3>(ports, 0)));
}

json ProxyDecomposeMatrixScale::zentResult(const Arguments& args) const {
    return results(output(call<decomposeMatrixScale>(args)));
}

} // namespace zent
