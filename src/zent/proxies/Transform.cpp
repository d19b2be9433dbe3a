#include "zent/proxies/Transform.h"

#include "zent/nodes/transform.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyTransform::mayaResult(const std::vector<Port>& ports) const {
    return results(output("matrix", result<mat4>(ports, 0)));
}

json ProxyTransform::zentResult(const Arguments& args) const {
    return results(output(call<transform>(args)));
}

json ProxyTransform::closure(const Arguments& args, const std::vector<Port>& /*ports*/) const {
    json report = json::object();
    report["inputs"] =
        results(input<vec3>("translate", args, 0), input<Euler>("rotate", args, 1), input<int>("rotateOrder", args, 2),
                input<vec3>("scale", args, 3), input<vec3>("shear", args, 4), input<vec3>("rotatePivot", args, 5),
                input<vec3>("scalePivot", args, 6), input<vec3>("rotatePivotTranslate", args, 7),
                input<vec3>("scalePivotTranslate", args, 8));
    return report;
}

} // namespace zent
