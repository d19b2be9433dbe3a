#include "zent/nodes/multiplyDivide.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyMultiplyDivide3D : public Plain<multiplyDivide3D> {
public:
    ProxyMultiplyDivide3D() : Plain("multiplyDivide3D", "output") {}
};
template Method method<ProxyMultiplyDivide3D>();

} // namespace zent
