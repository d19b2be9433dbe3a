#include "zent/proxies/DistanceBetweenTwoPoints.h"

namespace zent {

template Method method<ProxyDistanceBetweenTwoPoints>();

} // namespace zent
