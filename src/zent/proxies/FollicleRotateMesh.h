#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `follicleRotateMesh`.
class ProxyFollicleRotateMesh : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    /// A scene fragment that stands on its own: the faces around the follicle's quad, with their points and UVs, as a
    /// mesh. Needs the mesh and the follicle in the scene.
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return "follicleRotateMesh"; }
};

} // namespace zent
