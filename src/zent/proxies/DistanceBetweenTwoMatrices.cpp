#include "zent/nodes/distanceBetween.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyDistanceBetweenTwoMatrices : public Plain<distanceBetweenTwoMatrices> {
public:
    ProxyDistanceBetweenTwoMatrices() : Plain("distanceBetweenTwoMatrices", "distance") {}
};
template Method method<ProxyDistanceBetweenTwoMatrices>();

} // namespace zent
