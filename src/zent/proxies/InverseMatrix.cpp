#include "zent/proxies/InverseMatrix.h"

#include "zent/nodes/inverseMatrix.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyInverseMatrix::mayaResult(const std::vector<Port>& ports) const {
    return results(output("inverseMatrix", result<mat4>(ports, 0)));
}

json ProxyInverseMatrix::zentResult(const Arguments& args) const {
    return results(output(call<inverseMatrix>(args)));
}

} // namespace zent
