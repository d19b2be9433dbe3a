#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPointOnSurfaceTangentU : public Plain<pointOnSurfaceTangentU> {
public:
    ProxyPointOnSurfaceTangentU() : Plain("pointOnSurfaceTangentU", "tangentU") {}
};
template Method method<ProxyPointOnSurfaceTangentU>();

} // namespace zent
