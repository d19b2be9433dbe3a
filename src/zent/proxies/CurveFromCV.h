#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `curve_from_cv`.
class ProxyCurveFromCV : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "curve_from_cv"; }
};

} // namespace zent
