#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPointOnSurfaceNormal : public Plain<pointOnSurfaceNormal> {
public:
    ProxyPointOnSurfaceNormal() : Plain("pointOnSurfaceNormal", "normal") {}
};
template Method method<ProxyPointOnSurfaceNormal>();

} // namespace zent
