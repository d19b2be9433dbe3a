#include "zent/nodes/remapValue.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyRemapValue : public Plain<remapValue> {
public:
    ProxyRemapValue() : Plain("remapValue", "outValue") {}
};
template Method method<ProxyRemapValue>();

} // namespace zent
