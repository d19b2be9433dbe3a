#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `transform`.
class ProxyTransform : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return "transform"; }
};

} // namespace zent
