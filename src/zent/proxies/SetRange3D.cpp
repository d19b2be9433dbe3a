#include "zent/nodes/setRange.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxySetRange3D : public Plain<setRange3D> {
public:
    ProxySetRange3D() : Plain("setRange3D", "outValue") {}
};
template Method method<ProxySetRange3D>();

} // namespace zent
