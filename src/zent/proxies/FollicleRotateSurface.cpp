#include "zent/nodes/follicle.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyFollicleRotateSurface : public Plain<follicleRotateSurface, Rotation> {
public:
    ProxyFollicleRotateSurface() : Plain("follicleRotateSurface", "outRotate") {}
};
template Method method<ProxyFollicleRotateSurface>();

} // namespace zent
