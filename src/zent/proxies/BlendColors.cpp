#include "zent/nodes/blendColors.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyBlendColors : public Plain<blendColors> {
public:
    ProxyBlendColors() : Plain("blendColors", "output") {}
};
template Method method<ProxyBlendColors>();

} // namespace zent
