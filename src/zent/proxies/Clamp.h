#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `clamp`.
class ProxyClamp : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "clamp"; }
};

} // namespace zent
