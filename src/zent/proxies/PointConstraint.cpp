#include "zent/proxies/PointConstraint.h"

#include "zent/nodes/pointConstraint.h"
#include "zent/proxies/Binding.h"

namespace zent {

namespace {

/// The weighted form of the node function, not the one of a single target.
constexpr auto kWeighted = static_cast<vec3 (*)(mat4, vec3, vec3, vec3, TargetList<float>, vec3, TargetList<mat4>,
                                                TargetList<vec3>, TargetList<vec3>)>(pointConstraint);

} // namespace

json ProxyPointConstraint::mayaResult(const std::vector<Port>& ports) const {
    return results(output("constraintTranslate", result<vec3>(ports, 0)));
}

json ProxyPointConstraint::zentResult(const Arguments& args) const {
    return results(output(call<kWeighted>(args)));
}

} // namespace zent
