#include "zent/proxies/WorldSurface.h"

#include "zent/nodes/worldSurface.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyWorldSurface::mayaResult(const std::vector<Port>& ports) const {
    return results(output("worldSpace[0]", result<Surface>(ports, 0)));
}

json ProxyWorldSurface::zentResult(const Arguments& args) const {
    return results(output(call<worldSurface>(args)));
}

} // namespace zent
