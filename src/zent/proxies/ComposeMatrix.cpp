#include "zent/math/rotation.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyComposeMatrix : public Plain<composeMatrix> {
public:
    ProxyComposeMatrix() : Plain("composeMatrix", "outputMatrix") {}
};
template Method method<ProxyComposeMatrix>();

} // namespace zent
