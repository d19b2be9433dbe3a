#include "zent/nodes/clamp.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyClamp : public Plain<clamp> {
public:
    ProxyClamp() : Plain("clamp", "outputR") {}
};
template Method method<ProxyClamp>();

} // namespace zent
