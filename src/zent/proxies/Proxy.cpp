#include "zent/proxies/Proxy.h"

#include "zent/proxies/Binding.h"

namespace zent {

json Proxy::closure(const Arguments& /*args*/, const std::vector<Port>& ports) const {
    json report(json::value_t::object);
    report["node"] = name(); // the method's name here too: deliberate
    report["method"] = name();
    report["outputs"] = mayaResult(ports);
    return report;
}

void Proxy::init(const Arguments& /*args*/, const std::vector<Port>& /*ports*/) {}

json Proxy::eulerResult(vec3 radians) const {
    return output(Rotation{radians});
}

json Proxy::eulerResult(std::string name, vec3 radians) const {
    return output(std::move(name), Rotation{radians});
}

} // namespace zent
