#include "zent/proxies/BlendTwoAttr.h"

#include "zent/nodes/blendTwoAttr.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyBlendTwoAttr::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<float>(ports, 0)));
}

json ProxyBlendTwoAttr::zentResult(const Arguments& args) const {
    return results(output(call<blendTwoAttr>(args)));
}

} // namespace zent
