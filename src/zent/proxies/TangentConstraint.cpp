#include "zent/nodes/tangentConstraint.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyTangentConstraint : public Plain<tangentConstraint, Rotation> {
public:
    ProxyTangentConstraint() : Plain("tangentConstraint", "constraintRotate") {}
};
template Method method<ProxyTangentConstraint>();

} // namespace zent
