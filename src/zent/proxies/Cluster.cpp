#include "zent/proxies/Cluster.h"

#include "zent/nodes/cluster.h"
#include "zent/proxies/Binding.h"

#include <algorithm>

namespace zent {

ClusterHandle ClusterHandle::read(const Arguments& args, unsigned int start) {
    // Braces read the arguments in order, so that the first bad one is the one reported.
    return {zent::read<mat4>(args.get(start)),     zent::read<mat4>(args.get(start + 1)),
            zent::read<int>(args.get(start + 2)),  zent::read<vec3>(args.get(start + 4)),
            zent::read<vec3>(args.get(start + 5)), zent::read<int>(args.get(start + 6)),
            zent::read<vec3>(args.get(start + 7)), zent::read<vec3>(args.get(start + 8)),
            zent::read<vec3>(args.get(start + 9)), zent::read<vec3>(args.get(start + 10)),
            zent::read<vec3>(args.get(start + 11))};
}

template <class T>
void ProxyCluster<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    constexpr unsigned int kStart = 2;
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args.get(0));
    handle = ClusterHandle::read(args, kStart);
    const auto indices = read<std::vector<unsigned int>>(args.get(1));
    split_attributes(indices, args.get(ClusterHandle::weightsArgument(kStart)).getFloatMap());
}

template <class T>
void ProxyCluster<T>::split_attributes(const std::vector<unsigned int>& indices, const WeightMap& weights) {
    attributes.resize(pointCount(this->input));
    for (unsigned int i = 0; i < attributes.size(); ++i) {
        const auto weight = weights.find(i);
        attributes[i] = {std::binary_search(indices.begin(), indices.end(), i),
                         weight == weights.end() ? 1.0f : weight->second};
    }
}

template <class T>
void ProxyCluster<T>::deform(T& point, unsigned int index) const {
    const VtxAttribute& attribute = attributes.at(index);
    std::vector<unsigned int> indices;
    if (attribute.listed) {
        indices.push_back(0u);
    }
    _cluster<T>(point, std::move(indices), handle.first, handle.second, handle.angleMode, {{0u, attribute.weight}},
                handle.translate, handle.rotate, handle.rotateOrder, handle.scale, handle.rotatePivot,
                handle.scalePivot, handle.rotatePivotTranslate, handle.scalePivotTranslate);
}

template class ProxyCluster<Curve>;
template class ProxyCluster<Surface>;
template class ProxyCluster<Lattice>;

} // namespace zent
