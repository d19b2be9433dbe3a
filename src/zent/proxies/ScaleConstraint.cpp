#include "zent/proxies/ScaleConstraint.h"

#include "zent/nodes/scaleConstraint.h"
#include "zent/proxies/Binding.h"

namespace zent {

namespace {

/// The weighted form of the node function, not the one of a single target.
constexpr auto kWeighted =
    static_cast<vec3 (*)(mat4, bool, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>)>(
        scaleConstraint);

} // namespace

json ProxyScaleConstraint::mayaResult(const std::vector<Port>& ports) const {
    return results(output("constraintScale", result<vec3>(ports, 0)));
}

json ProxyScaleConstraint::zentResult(const Arguments& args) const {
    return results(output(call<kWeighted>(args)));
}

} // namespace zent
