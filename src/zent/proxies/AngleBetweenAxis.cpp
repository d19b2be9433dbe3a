#include "zent/nodes/angleBetween.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyAngleBetweenAxis : public Plain<angleBetween__COMPUTE__axis> {
public:
    ProxyAngleBetweenAxis() : Plain("angleBetween__COMPUTE__axis", "axis") {}
};
template Method method<ProxyAngleBetweenAxis>();

} // namespace zent
