#include "zent/nodes/curveInfo.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyCurveInfo : public Plain<curveInfo> {
public:
    ProxyCurveInfo() : Plain("curveInfo", "arcLength") {}
};
template Method method<ProxyCurveInfo>();

} // namespace zent
