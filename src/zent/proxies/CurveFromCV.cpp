#include "zent/proxies/CurveFromCV.h"

#include "zent/nodes/curve_from_cv.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyCurveFromCV::mayaResult(const std::vector<Port>& ports) const {
    return results(output("local", result<Curve>(ports, 0)));
}

json ProxyCurveFromCV::zentResult(const Arguments& args) const {
    return results(output(call<curve_from_cv>(args)));
}

} // namespace zent
