#include "zent/nodes/animCurve.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyAnimCurve : public Plain<animCurve> {
public:
    ProxyAnimCurve() : Plain("animCurve", "output") {}
};
template Method method<ProxyAnimCurve>();

} // namespace zent
