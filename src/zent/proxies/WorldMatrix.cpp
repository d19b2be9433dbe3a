#include "zent/nodes/worldMatrix.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyWorldMatrix : public Plain<worldMatrix> {
public:
    ProxyWorldMatrix() : Plain("worldMatrix", "worldMatrix[0]") {}
};
template Method method<ProxyWorldMatrix>();

} // namespace zent
