#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `follicleRotateSurface`.
class ProxyFollicleRotateSurface : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "follicleRotateSurface"; }
};

} // namespace zent
