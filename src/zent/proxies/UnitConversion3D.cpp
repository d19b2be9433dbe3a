#include "zent/nodes/unitConversion.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyUnitConversion3D : public Plain<unitConversion3D> {
public:
    ProxyUnitConversion3D() : Plain("unitConversion3D", "output") {}
};
template Method method<ProxyUnitConversion3D>();

} // namespace zent
