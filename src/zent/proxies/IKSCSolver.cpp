#include "zent/nodes/ikSCsolver.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyIKSCSolver : public Plain<ikSCsolver, std::vector<vec3>> {
public:
    ProxyIKSCSolver() : Plain("ikSCsolver", "rotate") {}
};
template Method method<ProxyIKSCSolver>();

} // namespace zent
