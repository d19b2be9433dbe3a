#include "zent/nodes/worldSurface.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyWorldSurface : public Plain<worldSurface> {
public:
    ProxyWorldSurface() : Plain("worldSurface", "worldSpace[0]") {}
};
template Method method<ProxyWorldSurface>();

} // namespace zent
