#include "zent/proxies/CombinationShape.h"

#include "zent/nodes/combinationShape.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyCombinationShape::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputWeight", result<float>(ports, 0)));
}

json ProxyCombinationShape::zentResult(const Arguments& args) const {
    return results(output(call<combinationShape>(args)));
}

} // namespace zent
