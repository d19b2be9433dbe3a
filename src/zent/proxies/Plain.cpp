#include "zent/proxies/Plain.h"

#include <nlohmann/json.hpp>

namespace zent {

json PlainProxy::mayaResult(const std::vector<Port>& ports) const {
    json outputs(json::value_t::array);
    maya_(outputs, plug_, ports);
    return outputs;
}

json PlainProxy::zentResult(const Arguments& args) const {
    json outputs(json::value_t::array);
    zent_(outputs, args);
    return outputs;
}

MethodInfo PlainProxy::plainInfo(Describe output, std::vector<ValueInfo>&& arguments) const {
    return {{}, {}, false, {output(plug_)}, std::move(arguments)};
}

} // namespace zent
