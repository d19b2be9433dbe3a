#include "zent/nodes/cluster.h"
#include "zent/proxies/ClusterHandle.h"
#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `_cluster<T>` on all points; T is Curve.
template <class T>
class ProxyClusterFull : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("clusterFull") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    std::vector<vec3> deformAll() const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override { move = handle.pointCluster(); }
    MethodInfo info() const {
        return this->deformerInfo(
            argumentsOfTypes<T, mat4, mat4, int, WeightMap, vec3, vec3, int, vec3, vec3, vec3, vec3, vec3>());
    }

private:
    static constexpr unsigned int kStart = 1;

    void split_attributes(const WeightMap& weights);

    ClusterHandle handle;
    PointCluster move = handle.pointCluster();
    std::vector<float> weightByPoint;
};

template <class T>
void ProxyClusterFull<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    handle = ClusterHandle::read(args, kStart);
    prepare();
    split_attributes(read<WeightMap>(args, ClusterHandle::weightsArgument(kStart)));
}

template <class T>
void ProxyClusterFull<T>::split_attributes(const WeightMap& weights) {
    weightByPoint.assign(this->recordCount(), 1.0f);
    for (auto it = weights.begin(); it != weights.end() && it->first < weightByPoint.size(); ++it) {
        weightByPoint[it->first] = it->second;
    }
}

template <class T>
Slot ProxyClusterFull<T>::slot(unsigned int index, const EntryPlace& entry) {
    if (index == ClusterHandle::weightsArgument(kStart)) {
        const bool isPoint = !entry.indices.empty() && entry.indices[0] < weightByPoint.size();
        return isPoint ? slotOf(weightByPoint[entry.indices[0]]) : Slot();
    }
    return index == 0 ? entrySlot(this->input, entry) : handle.slot(kStart, index, entry);
}

template <class T>
void ProxyClusterFull<T>::deform(T& point, unsigned int index) const {
    vec3& moved = pointsOf(point)[0];
    moved = move(moved, weightByPoint.at(index));
}

template <class T>
std::vector<vec3> ProxyClusterFull<T>::deformAll() const {
    std::vector<vec3> moved(weightByPoint.size() < this->count() ? 0 : this->count());
    for (std::size_t i = 0; i < moved.size(); ++i) {
        moved[i] = move(pointsOf(this->input)[i], weightByPoint[i]);
    }
    return moved;
}

template Method method<ProxyClusterFull<Curve>>();

} // namespace zent
