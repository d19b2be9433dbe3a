#include "zent/proxies/FollicleTranslateMesh.h"

#include "zent/nodes/follicle.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyFollicleTranslateMesh::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outTranslate", result<vec3>(ports, 0)));
}

json ProxyFollicleTranslateMesh::zentResult(const Arguments& args) const {
    return results(output(call<follicleTranslateMesh>(args)));
}

} // namespace zent
