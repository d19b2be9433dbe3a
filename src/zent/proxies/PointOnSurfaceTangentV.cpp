#include "zent/nodes/pointOnSurface.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPointOnSurfaceTangentV : public Plain<pointOnSurfaceTangentV> {
public:
    ProxyPointOnSurfaceTangentV() : Plain("pointOnSurfaceTangentV", "tangentV") {}
};
template Method method<ProxyPointOnSurfaceTangentV>();

} // namespace zent
