#pragma once

#include "zent/proxies/Cluster.h"

namespace zent {

/// The adapter of `_cluster<T>` on all points; T is Curve.
template <class T>
class ProxyClusterFull : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("clusterFull") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;

private:
    void split_attributes(const WeightMap& weights);

    ClusterHandle handle;
    std::vector<float> weightByPoint;
};

extern template class ProxyClusterFull<Curve>;

} // namespace zent
