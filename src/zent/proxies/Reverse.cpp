#include "zent/nodes/reverse.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyReverse : public Plain<reverse> {
public:
    ProxyReverse() : Plain("reverse", "outputX") {}
};
template Method method<ProxyReverse>();

} // namespace zent
