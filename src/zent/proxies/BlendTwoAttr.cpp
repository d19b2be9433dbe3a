#include "zent/nodes/blendTwoAttr.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyBlendTwoAttr : public Plain<blendTwoAttr> {
public:
    ProxyBlendTwoAttr() : Plain("blendTwoAttr", "output") {}
};
template Method method<ProxyBlendTwoAttr>();

} // namespace zent
