#pragma once

#include "zent/geometry/weights.h"
#include "zent/proxies/ProxyDeformer.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace zent {

/// The adapter of `blendShape<T>`; T is Mesh, Curve or Surface.
template <class T>
class ProxyBlendShape : public ProxyDeformer<T> {
public:
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return std::string("blendShape") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;

private:
    /// What one point needs, by ascending index: its places in whole shapes, its deltas, its factors. There may be many
    /// millions of these, so that they become the maps of a shape of one point only when that point's turn comes.
    struct VtxAttribute {
        std::vector<std::pair<ItemIndex, vec3>> shapes;
        std::vector<std::pair<ItemIndex, vec3>> deltas;
        std::vector<std::pair<unsigned int, float>> weightMaps;
    };

    void split_attributes(const std::map<ItemIndex, T>& shapes, const std::map<ItemIndex, DeltaList>& deltas,
                          const std::map<unsigned int, WeightMap>& weightMaps);

    /// The weights of the targets that have something for the point; the others would only be passed over.
    WeightMap weightsOf(const VtxAttribute& attribute) const;

    float envelope = 0.0f;
    WeightMap weights;
    std::vector<VtxAttribute> attributes;
};

extern template class ProxyBlendShape<Mesh>;
extern template class ProxyBlendShape<Curve>;
extern template class ProxyBlendShape<Surface>;

} // namespace zent
