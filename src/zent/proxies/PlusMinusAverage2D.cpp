#include "zent/nodes/plusMinusAverage.h"
#include "zent/proxies/Plain.h"

namespace zent {

/// Maya's side is read as a vector of three, and cut.
class ProxyPlusMinusAverage2D : public Plain<plusMinusAverage2D> {
public:
    ProxyPlusMinusAverage2D() : Plain("plusMinusAverage2D", "output2D") {}
    json mayaResult(const std::vector<Port>& ports) const override {
        return results(output("output2D", vec2(result<vec3>(ports, 0))));
    }
    MethodInfo info() const {
        return {{}, {}, false, {valueInfo<vec3>("output2D")}, argumentsOf<plusMinusAverage2D>()};
    }
};
template Method method<ProxyPlusMinusAverage2D>();

} // namespace zent
