#include "zent/nodes/polyEdgeToCurve.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyCurveFromMeshEdge : public Plain<curveFromMeshEdge> {
public:
    ProxyCurveFromMeshEdge() : Plain("curveFromMeshEdge", "outputCurve") {}
};
template Method method<ProxyCurveFromMeshEdge>();

} // namespace zent
