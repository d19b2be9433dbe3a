#pragma once

#include "zent/geometry/weights.h"
#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// What a cluster does to every point alike: its matrices and its handle's channels.
struct ClusterHandle {
    mat4 first{1.0f};
    mat4 second{1.0f};
    int angleMode = 0;
    vec3 translate{0.0f};
    vec3 rotate{0.0f};
    int rotateOrder = 0;
    vec3 scale{1.0f};
    vec3 rotatePivot{0.0f};
    vec3 scalePivot{0.0f};
    vec3 rotatePivotTranslate{0.0f};
    vec3 scalePivotTranslate{0.0f};

    /// Reads the arguments from `start` on, the first matrix's; the weights among them are left to the adapter.
    static ClusterHandle read(const Arguments& args, unsigned int start);
    /// The argument of the weights.
    static unsigned int weightsArgument(unsigned int start) { return start + 3; }
};

/// The adapter of `_cluster<T>` on listed points; T is Curve, Surface or Lattice.
template <class T>
class ProxyCluster : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("cluster") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;

private:
    struct VtxAttribute {
        bool listed; ///< has no effect: the weight alone makes a point a member
        float weight;
    };

    void split_attributes(const std::vector<unsigned int>& indices, const WeightMap& weights);

    ClusterHandle handle;
    std::vector<VtxAttribute> attributes;
};

extern template class ProxyCluster<Curve>;
extern template class ProxyCluster<Surface>;
extern template class ProxyCluster<Lattice>;

} // namespace zent
