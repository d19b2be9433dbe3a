#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `ikSplineSolver`: the joints' rotates in degrees and the first joint's translate.
class ProxyIKSplineSolver : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "ikSplineSolver"; }

private:
    json degrees(const std::vector<vec3>& rotates) const;
};

} // namespace zent
