#include "zent/nodes/closestPointOnSurface.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/FunctionEvaluation.h"

namespace zent {

/// Both parameters are results of their own.
template <>
struct Results<vec2> {
    static Slot at(vec2& value, unsigned int attribute, const EntryPlace& entry) {
        return attribute < 2 && entry.position == 0 ? slotOf(value[static_cast<int>(attribute)]) : Slot();
    }
};

class ProxyClosestPointOnSurface : public Proxy, public Bindable {
public:
    json mayaResult(const std::vector<Port>& ports) const override {
        return results(output("parameterU", result<float>(ports, 0)), output("parameterV", result<float>(ports, 1)));
    }
    json zentResult(const Arguments& args) const override {
        json outputs(json::value_t::array);
        append(outputs, call<closestPointOnSurface>(args));
        return outputs;
    }
    std::unique_ptr<Evaluation> bind(const Arguments& args) override {
        return std::make_unique<FunctionEvaluation<closestPointOnSurface>>(args, &append);
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

private:
    static void append(json& outputs, const vec2& parameters) {
        outputs.push_back(output(parameters.x));
        outputs.push_back(output(parameters.y));
    }
};
template Method method<ProxyClosestPointOnSurface>();

} // namespace zent
