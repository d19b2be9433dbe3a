#include "zent/nodes/multDoubleLinear.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyMultDoubleLinear : public Plain<multDoubleLinear> {
public:
    ProxyMultDoubleLinear() : Plain("multDoubleLinear", "output") {}
};
template Method method<ProxyMultDoubleLinear>();

} // namespace zent
