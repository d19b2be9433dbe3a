#include "zent/math/rotation.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyDecomposeMatrixShear : public Plain<decomposeMatrixShear> {
public:
    ProxyDecomposeMatrixShear() : Plain("decomposeMatrixShear", "outputShear") {}
};
template Method method<ProxyDecomposeMatrixShear>();

} // namespace zent
