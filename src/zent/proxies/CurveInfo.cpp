#include "zent/proxies/CurveInfo.h"

#include "zent/nodes/curveInfo.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyCurveInfo::mayaResult(const std::vector<Port>& ports) const {
    return results(output("arcLength", result<float>(ports, 0)));
}

json ProxyCurveInfo::zentResult(const Arguments& args) const {
    return results(output(call<curveInfo>(args)));
}

} // namespace zent
