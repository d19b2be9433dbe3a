#include "zent/nodes/poleVectorConstraint.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPoleVectorConstraint : public Plain<poleVectorConstraint> {
public:
    ProxyPoleVectorConstraint() : Plain("poleVectorConstraint", "constraintTranslate") {}
};
template Method method<ProxyPoleVectorConstraint>();

} // namespace zent
