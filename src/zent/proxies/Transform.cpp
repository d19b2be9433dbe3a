#include "zent/nodes/transform.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyTransform : public Plain<transform> {
public:
    ProxyTransform() : Plain("transform", "matrix") {}
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
};
template Method method<ProxyTransform>();

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
