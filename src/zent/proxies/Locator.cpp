#include "zent/nodes/locatorWorldPosition.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyLocator : public Plain<locatorWorldPosition> {
public:
    ProxyLocator() : Plain("locatorWorldPosition", "worldPosition[0]") {}
};
template Method method<ProxyLocator>();

} // namespace zent
