#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPointOnSurfacePosition : public Plain<pointOnSurfacePosition> {
public:
    ProxyPointOnSurfacePosition() : Plain("pointOnSurfacePosition", "position") {}
};
template Method method<ProxyPointOnSurfacePosition>();

} // namespace zent
