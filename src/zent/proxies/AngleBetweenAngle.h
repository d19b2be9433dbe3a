#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `angleBetween__COMPUTE__angle`.
class ProxyAngleBetweenAngle : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "angleBetween__COMPUTE__angle"; }
};

} // namespace zent
