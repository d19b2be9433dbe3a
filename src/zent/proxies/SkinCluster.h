#pragma once

#include "zent/geometry/weights.h"
#include "zent/ProxyDeformer.h"

namespace zent {

/// The adapter of `skin<T>`; T is Mesh, Curve, Surface or Lattice.
template <class T>
class ProxySkinCluster : public ProxyDeformer<T> {
public:
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return std::string("skin") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;

private:
    /// The influences of one point: three lists of one length.
    struct VtxAttribute {
        std::vector<mat4> matrices;
        std::vector<mat4> bindPreMatrices;
        std::vector<float> weights;
    };

    void split_attributes(const std::vector<mat4>& matrix, const std::vector<mat4>& bindPreMatrix,
                          const SkinWeights& weights);

    float envelope = 0.0f;
    mat4 geomMatrix{1.0f};
    std::vector<VtxAttribute> attributes;
};

extern template class ProxySkinCluster<Mesh>;
extern template class ProxySkinCluster<Curve>;
extern template class ProxySkinCluster<Surface>;
extern template class ProxySkinCluster<Lattice>;

} // namespace zent
