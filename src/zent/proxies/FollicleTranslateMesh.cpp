#include "zent/nodes/follicle.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyFollicleTranslateMesh : public Plain<follicleTranslateMesh> {
public:
    ProxyFollicleTranslateMesh() : Plain("follicleTranslateMesh", "outTranslate") {}
};
template Method method<ProxyFollicleTranslateMesh>();

} // namespace zent
