#include "zent/nodes/pairBlend.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPairBlendTranslate : public Plain<pairBlendTranslate> {
public:
    ProxyPairBlendTranslate() : Plain("pairBlendTranslate", "outTranslate") {}
};
template Method method<ProxyPairBlendTranslate>();

} // namespace zent
