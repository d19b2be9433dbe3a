#include "zent/proxies/ComposeMatrix.h"

#include "zent/math/rotation.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyComposeMatrix::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputMatrix", result<mat4>(ports, 0)));
}

json ProxyComposeMatrix::zentResult(const Arguments& args) const {
    return results(output(call<composeMatrix>(args)));
}

} // namespace zent
