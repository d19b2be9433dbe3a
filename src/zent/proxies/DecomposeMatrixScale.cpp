#include "zent/math/rotation.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyDecomposeMatrixScale : public Plain<decomposeMatrixScale> {
public:
    ProxyDecomposeMatrixScale() : Plain("decomposeMatrixScale", "outputScale") {}
};
template Method method<ProxyDecomposeMatrixScale>();

} // namespace zent
