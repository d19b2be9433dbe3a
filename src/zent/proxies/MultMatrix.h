#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `multMatrix`.
class ProxyMultMatrix : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "multMatrix"; }
};

} // namespace zent
