#include "zent/nodes/condition.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyCondition3D : public Plain<condition3D> {
public:
    ProxyCondition3D() : Plain("condition3D", "outColor") {}
};
template Method method<ProxyCondition3D>();

} // namespace zent
