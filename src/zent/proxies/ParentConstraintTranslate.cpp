#include "zent/proxies/ParentConstraintTranslate.h"

#include "zent/nodes/parentConstraint.h"
#include "zent/proxies/Binding.h"

namespace zent {

namespace {

/// The weighted form of the node function, not the one of a single target.
constexpr auto kWeighted =
    static_cast<vec3 (*)(mat4, vec3, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>,
                         TargetList<vec3>, TargetList<vec3>, TargetList<vec3>, TargetList<int>, TargetList<vec3>,
                         TargetList<vec3>, TargetList<bool>, TargetList<vec3>)>(parentConstraintTranslate);

} // namespace

json ProxyParentConstraintTranslate::mayaResult(const std::vector<Port>& ports) const {
    return results(output("constraintTranslate", result<vec3>(ports, 0)));
}

json ProxyParentConstraintTranslate::zentResult(const Arguments& args) const {
    return results(output(call<kWeighted>(args)));
}

} // namespace zent
