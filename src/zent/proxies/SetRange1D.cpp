#include "zent/nodes/setRange.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxySetRange1D : public Plain<setRange1D> {
public:
    ProxySetRange1D() : Plain("setRange1D", "outValueX") {}
};
template Method method<ProxySetRange1D>();

} // namespace zent
