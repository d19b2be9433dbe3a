#include "zent/proxies/BlendColors.h"

#include "zent/nodes/blendColors.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyBlendColors::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<vec3>(ports, 0)));
}

json ProxyBlendColors::zentResult(const Arguments& args) const {
    return results(output(call<blendColors>(args)));
}

} // namespace zent
