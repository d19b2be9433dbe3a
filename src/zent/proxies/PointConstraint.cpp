#include "zent/nodes/pointConstraint.h"
#include "zent/proxies/Plain.h"

namespace zent {

namespace {

/// The weighted form of the node function, not the one of a single target.
constexpr auto kPointConstraint =
    static_cast<vec3 (*)(mat4, vec3, vec3, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>,
                         TargetList<vec3>)>(pointConstraint);

} // namespace

class ProxyPointConstraint : public Plain<kPointConstraint> {
public:
    ProxyPointConstraint() : Plain("pointConstraint", "constraintTranslate") {}
};
template Method method<ProxyPointConstraint>();

} // namespace zent
