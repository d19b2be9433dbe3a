#include "zent/nodes/pointOnCurveInfo.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPointOnCurveInfo : public Plain<pointOnCurveInfo> {
public:
    ProxyPointOnCurveInfo() : Plain("pointOnCurveInfo", "position") {}
};
template Method method<ProxyPointOnCurveInfo>();

} // namespace zent
