#include "zent/nodes/plusMinusAverage.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyPlusMinusAverage1D : public Plain<plusMinusAverage1D> {
public:
    ProxyPlusMinusAverage1D() : Plain("plusMinusAverage1D", "output1D") {}
};
template Method method<ProxyPlusMinusAverage1D>();

} // namespace zent
