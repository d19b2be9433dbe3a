#include "zent/nodes/blendWeighted.h"
#include "zent/proxies/Plain.h"

namespace zent {

template <>
struct Inside<blendWeighted> : Inside<IMPL_blendWeighted> {};

class ProxyBlendWeighted : public Plain<blendWeighted> {
public:
    ProxyBlendWeighted() : Plain("blendWeighted", "output") {}
};
template Method method<ProxyBlendWeighted>();

} // namespace zent
