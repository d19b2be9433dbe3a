#include "zent/nodes/plusMinusAverage.h"
#include "zent/proxies/Plain.h"

namespace zent {

/// Maya's side is read as a vector of three, and cut.
class ProxyPlusMinusAverage2D : public Plain<plusMinusAverage2D> {
public:
    ProxyPlusMinusAverage2D() : Plain("plusMinusAverage2D", "output2D", &showCut) {}
    MethodInfo info() const { return plainInfo(&Access<vec3>::info, argumentsOf<plusMinusAverage2D>()); }

private:
    static void showCut(json& outputs, const char* plug, const std::vector<Port>& ports) {
        Shown<vec2>::append(outputs, plug, vec2(Access<vec3>::result(ports, 0)));
    }
};
template Method method<ProxyPlusMinusAverage2D>();

} // namespace zent
