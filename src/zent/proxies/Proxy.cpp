#include "zent/proxies/Proxy.h"

#include "zent/proxies/Binding.h"
#include "zent/values/Compare.h"

namespace zent {

namespace {

constexpr float kDegreesPerRadian = 57.29578f;

} // namespace

json Proxy::closure(const Arguments& /*args*/, const std::vector<Port>& ports) const {
    json report(json::value_t::object);
    report["node"] = name(); // the method's name here too: deliberate
    report["method"] = name();
    report["outputs"] = mayaResult(ports);
    return report;
}

void Proxy::init(const Arguments& /*args*/, const std::vector<Port>& /*ports*/) {}

bool Proxy::agree(const std::vector<Port>& ports, const Arguments& args, float epsilon, json& maya, json& zent) const {
    maya = mayaResult(ports);
    zent = zentResult(args);
    return compare(maya, zent, epsilon);
}

json Proxy::eulerResult(vec3 radians) const {
    return output(Euler{radians * kDegreesPerRadian});
}

json Proxy::eulerResult(std::string name, vec3 radians) const {
    return output(std::move(name), Euler{radians * kDegreesPerRadian});
}

} // namespace zent
