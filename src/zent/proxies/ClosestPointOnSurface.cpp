#include "zent/nodes/closestPointOnSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

class ProxyClosestPointOnSurface : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override {
        return results(output("parameterU", result<float>(ports, 0)), output("parameterV", result<float>(ports, 1)));
    }
    json zentResult(const Arguments& args) const override {
        const auto parameters = call<closestPointOnSurface>(args);
        return results(output(parameters.x), output(parameters.y));
    }
    json closure(const Arguments& args, const std::vector<Port>& ports) const override {
        json report = Proxy::closure(args, ports);
        report["inputs"] = results(input<Surface>("inputSurface", args, 0), input<vec3>("inPosition", args, 1));
        return report;
    }
    std::string name() const override { return "closestPointOnSurface"; }
    MethodInfo info() const {
        return {{},
                {},
                false,
                {valueInfo<float>("parameterU"), valueInfo<float>("parameterV")},
                argumentsOf<closestPointOnSurface>()};
    }
};
template Method method<ProxyClosestPointOnSurface>();

} // namespace zent
