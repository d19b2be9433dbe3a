#pragma once

#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `deformBendPartialMesh`.
class ProxyDeformBendPartialMesh : public ProxyDeformer<Mesh> {
public:
    std::string name() const override { return "deformBendPartialMesh"; }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(Mesh& point, unsigned int index) const override;

private:
    void split_attributes(const std::vector<unsigned int>& indices);

    float envelope = 0.0f;
    mat4 handle{1.0f};
    float curvature = 0.0f;
    float lowBound = 0.0f;
    float highBound = 0.0f;
    std::vector<char> listed; ///< by point
};

} // namespace zent
