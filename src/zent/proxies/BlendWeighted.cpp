#include "zent/nodes/blendWeighted.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyBlendWeighted : public Plain<blendWeighted> {
public:
    ProxyBlendWeighted() : Plain("blendWeighted", "output") {}
};
template Method method<ProxyBlendWeighted>();

} // namespace zent
