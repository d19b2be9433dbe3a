#include "zent/nodes/ikRPsolver.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyIKRPSolver : public Plain<ikRPsolver> {
public:
    ProxyIKRPSolver() : Plain("ikRPsolver", "rotate") {}
};
template Method method<ProxyIKRPSolver>();

} // namespace zent
