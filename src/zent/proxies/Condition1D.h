#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `condition1D`.
class ProxyCondition1D : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return "condition1D"; }
};

} // namespace zent
