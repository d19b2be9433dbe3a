#include "zent/nodes/addDoubleLinear.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyAddDoubleLinear : public Plain<addDoubleLinear> {
public:
    ProxyAddDoubleLinear() : Plain("addDoubleLinear", "output") {}
};
template Method method<ProxyAddDoubleLinear>();

} // namespace zent
