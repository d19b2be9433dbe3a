#include "zent/nodes/aimConstraint.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyAimConstraint : public Plain<aimConstraint, Rotation> {
public:
    ProxyAimConstraint() : Plain("aimConstraint", "constraintRotate") {}
};
template Method method<ProxyAimConstraint>();

} // namespace zent
