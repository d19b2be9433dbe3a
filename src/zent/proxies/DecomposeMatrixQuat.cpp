#include "zent/math/rotation.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyDecomposeMatrixQuat : public Plain<decomposeMatrixQuat, vec4> {
public:
    ProxyDecomposeMatrixQuat() : Plain("decomposeMatrixQuat", "outputQuat") {}
};
template Method method<ProxyDecomposeMatrixQuat>();

} // namespace zent
