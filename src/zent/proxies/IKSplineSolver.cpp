#include "zent/nodes/ikSplineSolver.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/FunctionEvaluation.h"

namespace zent {

/// One after the other, as the adapter has them.
template <>
struct Results<SplineChain> {
    static Slot at(SplineChain& chain, unsigned int attribute, const EntryPlace& entry) {
        return attribute == 0   ? entrySlot(chain.rotates, entry)
               : attribute == 1 ? entrySlot(chain.rootTranslate, entry)
                                : Slot();
    }
};

template <>
struct Inside<ikSplineSolver> {
    template <class Values>
    void operator()(Values& values, SplineChain& value) {
        std::apply(
            [&](const Curve& curve, bool rootTwist, bool twistControl, int forwardAxis, int upAxis, int worldUpType,
                vec3 upVectorStart, vec3 upVectorEnd, const mat4& upMatrixStart, const mat4& upMatrixEnd,
                int /*unused*/, const auto&... rest) {
                IMPL_ikSplineSolver(curve, rootTwist, twistControl, forwardAxis, upAxis, worldUpType, upVectorStart,
                                    upVectorEnd, upMatrixStart, upMatrixEnd, rest..., samples, value);
            },
            values);
    }
    CurveSamples samples;
};

/// The joints' rotates and the first joint's translate.
class ProxyIKSplineSolver : public Proxy, public Bindable {
public:
    json mayaResult(const std::vector<Port>& ports) const override {
        return results(output("rotate", result<std::vector<Rotation>>(ports, 0)),
                       output("translate", result<vec3>(ports, 1)));
    }
    json zentResult(const Arguments& args) const override {
        json outputs(json::value_t::array);
        append(outputs, call<ikSplineSolver>(args));
        return outputs;
    }
    std::unique_ptr<Evaluation> bind(const Arguments& args) override {
        return std::make_unique<FunctionEvaluation<ikSplineSolver>>(args, &append);
    }
    std::string name() const override { return "ikSplineSolver"; }
    MethodInfo info() const {
        return {{},
                {},
                false,
                {valueInfo<std::vector<Rotation>>("rotate"), valueInfo<vec3>("translate")},
                argumentsOf<ikSplineSolver>()};
    }

private:
    static void append(json& outputs, const SplineChain& chain) {
        std::vector<Rotation> rotates;
        for (const vec3& rotate : chain.rotates) {
            rotates.push_back({rotate});
        }
        outputs.push_back(output(rotates));
        outputs.push_back(output(chain.rootTranslate));
    }
};
template Method method<ProxyIKSplineSolver>();

} // namespace zent
