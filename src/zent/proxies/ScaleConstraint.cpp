#include "zent/nodes/scaleConstraint.h"
#include "zent/proxies/Plain.h"

namespace zent {

namespace {

/// The weighted form of the node function, not the one of a single target.
constexpr auto kScaleConstraint =
    static_cast<vec3 (*)(mat4, bool, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>)>(
        scaleConstraint);

} // namespace

class ProxyScaleConstraint : public Plain<kScaleConstraint> {
public:
    ProxyScaleConstraint() : Plain("scaleConstraint", "constraintScale") {}
};
template Method method<ProxyScaleConstraint>();

} // namespace zent
