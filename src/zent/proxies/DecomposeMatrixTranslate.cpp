#include "zent/proxies/DecomposeMatrixTranslate.h"

#include "zent/math/rotation.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyDecomposeMatrixTranslate::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputTranslate", result<vec3>(ports, 0)));
}

json ProxyDecomposeMatrixTranslate::zentResult(const Arguments& args) const {
    return results(output(call<decomposeMatrixTranslate>(args)));
}

} // namespace zent
