#include "zent/proxies/ClosestPointOnSurface.h"

#include "zent/nodes/closestPointOnSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyClosestPointOnSurface::mayaResult(const std::vector<Port>& ports) const {
    return results(output("parameterU", result<float>(ports, 0)), output("parameterV", result<float>(ports, 1)));
}

json ProxyClosestPointOnSurface::zentResult(const Arguments& args) const {
    const auto parameters = call<closestPointOnSurface>(args);
    return results(output(parameters.x), output(parameters.y));
}

json ProxyClosestPointOnSurface::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = Proxy::closure(args, ports);
    report["inputs"] = results(input<Surface>("inputSurface", args, 0), input<vec3>("inPosition", args, 1));
    return report;
}

} // namespace zent
