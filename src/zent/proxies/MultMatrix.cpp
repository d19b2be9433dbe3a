#include "zent/nodes/multMatrix.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyMultMatrix : public Plain<multMatrix> {
public:
    ProxyMultMatrix() : Plain("multMatrix", "matrixSum") {}
};
template Method method<ProxyMultMatrix>();

} // namespace zent
