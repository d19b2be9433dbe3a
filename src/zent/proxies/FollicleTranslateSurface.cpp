#include "zent/nodes/follicle.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyFollicleTranslateSurface : public Plain<follicleTranslateSurface> {
public:
    ProxyFollicleTranslateSurface() : Plain("follicleTranslateSurface", "outTranslate") {}
};
template Method method<ProxyFollicleTranslateSurface>();

} // namespace zent
