#include "zent/proxies/PairBlendTranslate.h"

#include "zent/nodes/pairBlend.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPairBlendTranslate::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outTranslate", result<vec3>(ports, 0)));
}

json ProxyPairBlendTranslate::zentResult(const Arguments& args) const {
    return results(output(call<pairBlendTranslate>(args)));
}

} // namespace zent
