#include "zent/nodes/cluster.h"
#include "zent/proxies/ClusterHandle.h"
#include "zent/proxies/ProxyDeformer.h"

#include <algorithm>

namespace zent {

/// The adapter of `_cluster<T>` on listed points; T is Curve, Surface or Lattice.
template <class T>
class ProxyCluster : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("cluster") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    std::vector<vec3> deformAll() const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override { move = handle.pointCluster(); }
    MethodInfo info() const {
        return this->deformerInfo(argumentsOfTypes<T, std::vector<unsigned int>, mat4, mat4, int, WeightMap, vec3, vec3,
                                                   int, vec3, vec3, vec3, vec3, vec3>());
    }

private:
    static constexpr unsigned int kStart = 2;

    struct VtxAttribute {
        bool listed; ///< has no effect: the weight alone makes a point a member
        float weight;
    };

    void split_attributes(const std::vector<unsigned int>& indices, const WeightMap& weights);

    ClusterHandle handle;
    PointCluster move = handle.pointCluster();
    std::vector<VtxAttribute> attributes;
};

template <class T>
void ProxyCluster<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    handle = ClusterHandle::read(args, kStart);
    prepare();
    const auto indices = read<std::vector<unsigned int>>(args, 1);
    split_attributes(indices, read<WeightMap>(args, ClusterHandle::weightsArgument(kStart)));
}

template <class T>
void ProxyCluster<T>::split_attributes(const std::vector<unsigned int>& indices, const WeightMap& weights) {
    attributes.resize(this->recordCount());
    for (unsigned int i = 0; i < attributes.size(); ++i) {
        const auto weight = weights.find(i);
        attributes[i] = {std::binary_search(indices.begin(), indices.end(), i),
                         weight == weights.end() ? 1.0f : weight->second};
    }
}

template <class T>
Slot ProxyCluster<T>::slot(unsigned int index, const EntryPlace& entry) {
    if (index == ClusterHandle::weightsArgument(kStart)) {
        const bool isPoint = !entry.indices.empty() && entry.indices[0] < attributes.size();
        return isPoint ? slotOf(attributes[entry.indices[0]].weight) : Slot();
    }
    return index == 0 ? entrySlot(this->input, entry) : handle.slot(kStart, index, entry);
}

template <class T>
void ProxyCluster<T>::deform(T& point, unsigned int index) const {
    vec3& moved = pointsOf(point)[0];
    moved = move(moved, attributes.at(index).weight);
}

template <class T>
std::vector<vec3> ProxyCluster<T>::deformAll() const {
    std::vector<vec3> moved(attributes.size() < this->count() ? 0 : this->count());
    for (std::size_t i = 0; i < moved.size(); ++i) {
        moved[i] = move(pointsOf(this->input)[i], attributes[i].weight);
    }
    return moved;
}

template Method method<ProxyCluster<Curve>>();
template Method method<ProxyCluster<Surface>>();
template Method method<ProxyCluster<Lattice>>();

} // namespace zent
