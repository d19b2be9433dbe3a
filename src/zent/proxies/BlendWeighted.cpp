#include "zent/proxies/BlendWeighted.h"

#include "zent/nodes/blendWeighted.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyBlendWeighted::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<float>(ports, 0)));
}

json ProxyBlendWeighted::zentResult(const Arguments& args) const {
    return results(output(call<blendWeighted>(args)));
}

} // namespace zent
