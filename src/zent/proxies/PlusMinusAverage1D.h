#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `plusMinusAverage1D`.
class ProxyPlusMinusAverage1D : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "plusMinusAverage1D"; }
};

} // namespace zent
