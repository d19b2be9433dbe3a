#include "zent/nodes/plusMinusAverage.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPlusMinusAverage3D : public Plain<plusMinusAverage3D> {
public:
    ProxyPlusMinusAverage3D() : Plain("plusMinusAverage3D", "output3D") {}
};
template Method method<ProxyPlusMinusAverage3D>();

} // namespace zent
