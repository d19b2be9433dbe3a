#include "zent/nodes/ikSplineSolver.h"
#include "zent/proxies/Binding.h"

namespace zent {

/// The joints' rotates and the first joint's translate.
class ProxyIKSplineSolver : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override {
        return results(output("rotate", result<std::vector<Rotation>>(ports, 0)),
                       output("translate", result<vec3>(ports, 1)));
    }
    json zentResult(const Arguments& args) const override {
        const SplineChain chain = call<ikSplineSolver>(args);
        std::vector<Rotation> rotates;
        for (const vec3& rotate : chain.rotates) {
            rotates.push_back({rotate});
        }
        return results(output(rotates), output(chain.rootTranslate));
    }
    std::string name() const override { return "ikSplineSolver"; }
    MethodInfo info() const {
        return {{},
                {},
                false,
                {valueInfo<std::vector<Rotation>>("rotate"), valueInfo<vec3>("translate")},
                argumentsOf<ikSplineSolver>()};
    }
};
template Method method<ProxyIKSplineSolver>();

} // namespace zent
