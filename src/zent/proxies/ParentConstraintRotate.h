#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `parentConstraintRotate`.
class ProxyParentConstraintRotate : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return "parentConstraintRotate"; }
};

} // namespace zent
