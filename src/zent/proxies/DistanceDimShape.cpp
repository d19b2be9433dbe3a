#include "zent/proxies/DistanceBetweenTwoPoints.h"

namespace zent {

class ProxyDistanceDimShape : public ProxyDistanceBetweenTwoPoints {
public:
    std::string name() const override { return "distanceDimShape"; }
};
template Method method<ProxyDistanceDimShape>();

} // namespace zent
