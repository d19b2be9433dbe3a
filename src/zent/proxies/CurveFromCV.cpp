#include "zent/nodes/curve_from_cv.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyCurveFromCV : public Plain<curve_from_cv> {
public:
    ProxyCurveFromCV() : Plain("curve_from_cv", "local") {}
};
template Method method<ProxyCurveFromCV>();

} // namespace zent
