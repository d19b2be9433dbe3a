#include "zent/proxies/Reverse.h"

#include "zent/nodes/reverse.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyReverse::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputX", result<float>(ports, 0)));
}

json ProxyReverse::zentResult(const Arguments& args) const {
    return results(output(call<reverse>(args)));
}

} // namespace zent
