#include "zent/proxies/PairBlendRotate.h"

#include "zent/nodes/pairBlend.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPairBlendRotate::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outRotate", result<Euler>(ports, 0)));
}

json ProxyPairBlendRotate::zentResult(const Arguments& args) const {
    return results(output(Euler{call<pairBlendRotate>(args)}));
}

} // namespace zent
