#include "zent/nodes/weightDriverDrivers.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyWeightDriverDrivers : public Plain<weightDriverDrivers> {
public:
    ProxyWeightDriverDrivers() : Plain("weightDriverDrivers", "output") {}
};
template Method method<ProxyWeightDriverDrivers>();

} // namespace zent
