#include "zent/math/require.h"
#include "zent/nodes/skin.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/ByPoint.h"
#include "zent/proxies/ProxyDeformer.h"

#include <optional>
#include <stdexcept>
#include <utility>

namespace zent {

/// The adapter of `skin<T>`; T is Mesh, Curve, Surface or Lattice.
template <class T>
class ProxySkinCluster : public ProxyDeformer<T> {
public:
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
    std::string name() const override { return std::string("skin") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override { skinPalette(geomMatrix, matrices, bindPreMatrices, palette); }
    bool dropsMatrix() const override { return std::is_same_v<T, Mesh> && envelope >= kThreshold; }
    void deformPoints(T& shape, const T& onePoint, unsigned int from, unsigned int to) const override;
    std::vector<vec3> deformAll() const override;
    std::unique_ptr<Evaluation> bind(const Arguments& args) override;
    MethodInfo info() const { return this->deformerInfo(argumentsOf<skin<T>>()); }

protected:
    unsigned int inputArgument() const override { return 1; }

private:
    void checkWeights() const;
    const ByPoint<PointWeight>& split_attributes() const;

    float envelope = 0.0f;
    mat4 geomMatrix{1.0f};
    std::vector<mat4> matrices;
    std::vector<mat4> bindPreMatrices;
    std::vector<mat4> palette;            ///< what each influence does to a point
    const SkinWeights* weights = nullptr; ///< in the resource file's storage
    /// Influences and weights, from the first time on that a point is asked for by itself.
    mutable std::optional<ByPoint<PointWeight>> attributes;
};

template <class T>
void ProxySkinCluster<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    envelope = read<float>(args, 0);
    this->readInput(args, 1);
    geomMatrix = read<mat4>(args, 2);
    matrices = read<std::vector<mat4>>(args, 3);
    bindPreMatrices = read<std::vector<mat4>>(args, 4);
    weights = &args.get(5).castSingle().stored<SkinWeights>();
    attributes.reset();
    prepare();
}

template <class T>
void ProxySkinCluster<T>::checkWeights() const {
    for (std::size_t k = 0; k < weights->size(); ++k) {
        const auto& [vertex, influence, weight] = (*weights)[k];
        requireIndex("weightList", k, vertex, pointCount(this->input), "inputGeometry");
        requireIndex("weightList's influences", k, influence, matrices.size(), "matrix");
        requireIndex("weightList's influences", k, influence, bindPreMatrices.size(), "bindPreMatrix");
    }
}

template <class T>
const ByPoint<PointWeight>& ProxySkinCluster<T>::split_attributes() const {
    if (!attributes) {
        checkWeights();
        attributes.emplace(this->recordCount(), [this](auto take) {
            for (const auto& [vertex, influence, weight] : *weights) {
                take(vertex, PointWeight{influence, weight});
            }
        });
    }
    return *attributes;
}

// An evaluation may outlive the storage, and its points may be evaluated at the same time.
template <class T>
std::unique_ptr<Evaluation> ProxySkinCluster<T>::bind(const Arguments& args) {
    std::unique_ptr<Evaluation> evaluation = ProxyDeformer<T>::bind(args);
    split_attributes();
    return evaluation;
}

template <class T>
std::vector<vec3> ProxySkinCluster<T>::deformAll() const {
    const std::vector<vec3>& points = pointsOf(this->input);
    const unsigned int count = pointCount(this->input);
    // A surface's counts may speak for points that it lacks, or for too few.
    if (!(envelope >= kThreshold) || count < this->count() || count > points.size()) {
        checkWeights();
        return {};
    }
    try {
        return skinPoints(points.data(), count, palette, *weights);
    } catch (const std::runtime_error&) {
        checkWeights(); // which knows the arguments' names
        throw;
    }
}

template <class T>
void ProxySkinCluster<T>::deform(T& point, unsigned int index) const {
    const auto influences = split_attributes().at(index);
    if (!(envelope >= kThreshold)) {
        return;
    }
    const vec3 skinned = skinPoint(pointsOf(point)[0], palette, influences.begin(), influences.end());
    if constexpr (std::is_same_v<T, Mesh>) {
        point.matrixLinear = mat3(1.0f); // a skinned mesh comes back without a transform, the other shapes keep theirs
        point.translation = vec3(0.0f);
    }
    pointsOf(point)[0] = skinned;
}

template <class T>
void ProxySkinCluster<T>::deformPoints(T& shape, const T& /*onePoint*/, unsigned int from, unsigned int to) const {
    if (!(envelope >= kThreshold)) {
        return;
    }
    PointWriter<T> write(shape);
    const vec3* const points = pointsOf(this->input).data();
    const ByPoint<PointWeight>& byPoint = split_attributes();
    for (unsigned int i = from; i < to; ++i) {
        const auto influences = byPoint.at(i);
        write(i, skinPoint(points[i], palette, influences.begin(), influences.end()));
    }
}

template <class T>
Slot ProxySkinCluster<T>::slot(unsigned int index, const EntryPlace& entry) {
    switch (index) {
    case 0:
        return entrySlot(envelope, entry);
    case 1:
        return entrySlot(this->input, entry);
    case 2:
        return entrySlot(geomMatrix, entry);
    case 3:
        return entrySlot(matrices, entry);
    case 4:
        return entrySlot(bindPreMatrices, entry);
    default:
        return {};
    }
}

template <class T>
json ProxySkinCluster<T>::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = this->deformerClosure("skinCluster", envelope, args, ports);
    json::array_t ownMatrices;
    json::array_t ownBindPreMatrices;
    json::array_t ownWeights;
    for (const auto& [influence, weight] : split_attributes().at(this->cursor)) {
        ownMatrices.push_back(toJson(matrices[influence]));
        ownBindPreMatrices.push_back(toJson(bindPreMatrices[influence]));
        ownWeights.push_back(toJson(weight));
    }
    json& inputs = report["inputs"];
    inputs.push_back(output("geomMatrix", geomMatrix));
    inputs.push_back(typedValue("matrix", "Mat4List", std::move(ownMatrices)));
    inputs.push_back(typedValue("bindPreMatrix", "Mat4List", std::move(ownBindPreMatrices)));
    inputs.push_back(typedValue("weight", "FloatList", std::move(ownWeights)));
    return report;
}

template Method method<ProxySkinCluster<Mesh>>();
template Method method<ProxySkinCluster<Curve>>();
template Method method<ProxySkinCluster<Surface>>();
template Method method<ProxySkinCluster<Lattice>>();

} // namespace zent
