#include "zent/math/rotation.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyDecomposeMatrixRotate : public Plain<decomposeMatrixRotate, Euler> {
public:
    ProxyDecomposeMatrixRotate() : Plain("decomposeMatrixRotate", "outputRotate") {}
};
template Method method<ProxyDecomposeMatrixRotate>();

} // namespace zent
