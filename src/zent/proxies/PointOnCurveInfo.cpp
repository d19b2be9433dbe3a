#include "zent/proxies/PointOnCurveInfo.h"

#include "zent/nodes/pointOnCurveInfo.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyPointOnCurveInfo::mayaResult(const std::vector<Port>& ports) const {
    return results(output("position", result<vec3>(ports, 0)));
}

json ProxyPointOnCurveInfo::zentResult(const Arguments& args) const {
    return results(output(call<pointOnCurveInfo>(args)));
}

} // namespace zent
