#include "zent/proxies/DecomposeMatrixRotate.h"

#include "zent/math/rotation.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyDecomposeMatrixRotate::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputRotate", result<Euler>(ports, 0)));
}

json ProxyDecomposeMatrixRotate::zentResult(const Arguments& args) const {
    return results(output(Euler{call<decomposeMatrixRotate>(args)}));
}

} // namespace zent
