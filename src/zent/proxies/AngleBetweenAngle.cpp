#include "zent/nodes/angleBetween.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyAngleBetweenAngle : public Plain<angleBetween__COMPUTE__angle> {
public:
    ProxyAngleBetweenAngle() : Plain("angleBetween__COMPUTE__angle", "angle") {}
};
template Method method<ProxyAngleBetweenAngle>();

} // namespace zent
