#include "zent/nodes/parentConstraint.h"
#include "zent/proxies/Plain.h"

namespace zent {

namespace {

/// The weighted form of the node function, not the one of a single target.
constexpr auto kParentConstraintTranslate =
    static_cast<vec3 (*)(mat4, vec3, vec3, TargetList<float>, vec3, TargetList<mat4>, TargetList<vec3>,
                         TargetList<vec3>, TargetList<vec3>, TargetList<vec3>, TargetList<int>, TargetList<vec3>,
                         TargetList<vec3>, TargetList<bool>, TargetList<vec3>)>(parentConstraintTranslate);

} // namespace

class ProxyParentConstraintTranslate : public Plain<kParentConstraintTranslate> {
public:
    ProxyParentConstraintTranslate() : Plain("parentConstraintTranslate", "constraintTranslate") {}
};
template Method method<ProxyParentConstraintTranslate>();

} // namespace zent
