#include "zent/math/rotation.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyDecomposeMatrixTranslate : public Plain<decomposeMatrixTranslate> {
public:
    ProxyDecomposeMatrixTranslate() : Plain("decomposeMatrixTranslate", "outputTranslate") {}
};
template Method method<ProxyDecomposeMatrixTranslate>();

} // namespace zent
