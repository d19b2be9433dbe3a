#include "zent/nodes/unitConversion.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyUnitConversion1D : public Plain<unitConversion1D> {
public:
    ProxyUnitConversion1D() : Plain("unitConversion1D", "output") {}
};
template Method method<ProxyUnitConversion1D>();

} // namespace zent
