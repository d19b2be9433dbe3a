#include "zent/nodes/pairBlend.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPairBlendRotate : public Plain<pairBlendRotate, Euler> {
public:
    ProxyPairBlendRotate() : Plain("pairBlendRotate", "outRotate") {}
};
template Method method<ProxyPairBlendRotate>();

} // namespace zent
