#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPointOnSurfaceNormalizedNormal : public Plain<pointOnSurfaceNormalizedNormal> {
public:
    ProxyPointOnSurfaceNormalizedNormal() : Plain("pointOnSurfaceNormalizedNormal", "normalizedNormal") {}
};
template Method method<ProxyPointOnSurfaceNormalizedNormal>();

} // namespace zent
