#include "zent/proxies/ClusterFull.h"

#include "zent/nodes/cluster.h"
#include "zent/proxies/Binding.h"

namespace zent {

template <class T>
void ProxyClusterFull<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    constexpr unsigned int kStart = 1;
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args.get(0));
    handle = ClusterHandle::read(args, kStart);
    split_attributes(args.get(ClusterHandle::weightsArgument(kStart)).getFloatMap());
}

template <class T>
void ProxyClusterFull<T>::split_attributes(const WeightMap& weights) {
    weightByPoint.assign(pointCount(this->input), 1.0f);
    for (auto it = weights.begin(); it != weights.end() && it->first < weightByPoint.size(); ++it) {
        weightByPoint[it->first] = it->second;
    }
}

template <class T>
void ProxyClusterFull<T>::deform(T& point, unsigned int index) const {
    const float weight = weightByPoint.at(index);
    _cluster<T>(point, boost::none, handle.first, handle.second, handle.angleMode, {{0u, weight}}, handle.translate,
                handle.rotate, handle.rotateOrder, handle.scale, handle.rotatePivot, handle.scalePivot,
                handle.rotatePivotTranslate, handle.scalePivotTranslate);
}

template class ProxyClusterFull<Curve>;

} // namespace zent
