#include "zent/nodes/polyEdgeToCurve.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPolyEdgeToCurve : public Plain<polyEdgeToCurve> {
public:
    ProxyPolyEdgeToCurve() : Plain("polyEdgeToCurve", "outputcurve") {} // the plug's own name, with a small c
};
template Method method<ProxyPolyEdgeToCurve>();

} // namespace zent
