#include "zent/math/rotation.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyQuatToEuler : public Plain<quatToEuler, Euler> {
public:
    ProxyQuatToEuler() : Plain("quatToEuler", "outputRotate") {}
};
template Method method<ProxyQuatToEuler>();

} // namespace zent
