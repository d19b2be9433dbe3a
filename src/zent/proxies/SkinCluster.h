#pragma once

#include "zent/geometry/weights.h"
#include "zent/proxies/ProxyDeformer.h"

#include <utility>
#include <vector>

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
    /// The place of a point's influences in the list of all.
    struct Stretch {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    void split_attributes(std::vector<mat4> matrix, std::vector<mat4> bindPreMatrix, const SkinWeights& weights);
    VtxAttribute attributeAt(unsigned int index) const;

    float envelope = 0.0f;
    mat4 geomMatrix{1.0f};
    // Whole matrices for each weight would be a hundred times the list: a point gets them when its turn comes.
    std::vector<mat4> matrices;
    std::vector<mat4> bindPreMatrices;
    std::vector<std::pair<unsigned int, float>> influences; ///< index and weight, point by point
    std::vector<Stretch> attributes;                        ///< by point
};

extern template class ProxySkinCluster<Mesh>;
extern template class ProxySkinCluster<Curve>;
extern template class ProxySkinCluster<Surface>;
extern template class ProxySkinCluster<Lattice>;

} // namespace zent
