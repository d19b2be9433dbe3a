#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `curveFromSurfaceIso`.
class ProxyCurveFromSurfaceIso : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    /// Adds the record's inputs.
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return "curveFromSurfaceIso"; }
};

} // namespace zent
