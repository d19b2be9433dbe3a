#include "zent/math/require.h"
#include "zent/nodes/skin.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/ProxyDeformer.h"

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
    MethodInfo info() const { return this->deformerInfo(argumentsOf<skin<T>>()); }

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

template <class T>
void ProxySkinCluster<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    envelope = read<float>(args.get(0));
    this->readInput(args.get(1));
    geomMatrix = read<mat4>(args.get(2));
    auto matrix = read<std::vector<mat4>>(args.get(3));
    auto bindPreMatrix = read<std::vector<mat4>>(args.get(4));
    split_attributes(std::move(matrix), std::move(bindPreMatrix), read<SkinWeights>(args.get(5)));
}

template <class T>
void ProxySkinCluster<T>::split_attributes(std::vector<mat4> matrix, std::vector<mat4> bindPreMatrix,
                                           const SkinWeights& weights) {
    matrices = std::move(matrix);
    bindPreMatrices = std::move(bindPreMatrix);
    attributes.assign(pointCount(this->input), {});
    for (std::size_t k = 0; k < weights.size(); ++k) {
        const auto& [vertex, influence, weight] = weights[k];
        requireIndex("weightList", k, vertex, attributes.size(), "inputGeometry");
        requireIndex("weightList's influences", k, influence, matrices.size(), "matrix");
        requireIndex("weightList's influences", k, influence, bindPreMatrices.size(), "bindPreMatrix");
        ++attributes[vertex].end;
    }
    std::size_t begin = 0;
    for (Stretch& stretch : attributes) {
        const std::size_t count = stretch.end;
        stretch = {begin, begin}; // it grows again as it is filled
        begin += count;
    }
    influences.resize(weights.size());
    for (const auto& [vertex, influence, weight] : weights) {
        influences[attributes[vertex].end++] = {influence, weight};
    }
}

template <class T>
auto ProxySkinCluster<T>::attributeAt(unsigned int index) const -> VtxAttribute {
    const Stretch& stretch = attributes.at(index);
    const std::size_t count = stretch.end - stretch.begin;
    VtxAttribute attribute;
    attribute.matrices.reserve(count);
    attribute.bindPreMatrices.reserve(count);
    attribute.weights.reserve(count);
    for (std::size_t k = stretch.begin; k < stretch.end; ++k) {
        attribute.matrices.push_back(matrices[influences[k].first]);
        attribute.bindPreMatrices.push_back(bindPreMatrices[influences[k].first]);
        attribute.weights.push_back(influences[k].second);
    }
    return attribute;
}

template <class T>
void ProxySkinCluster<T>::deform(T& point, unsigned int index) const {
    const VtxAttribute attribute = attributeAt(index);
    SkinWeights weights;
    weights.reserve(attribute.weights.size());
    for (unsigned int k = 0; k < attribute.weights.size(); ++k) {
        weights.emplace_back(0u, k, attribute.weights[k]);
    }
    point = IMPL_skin<T>(envelope, point, geomMatrix, attribute.matrices, attribute.bindPreMatrices, weights);
}

template <class T>
json ProxySkinCluster<T>::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = this->deformerClosure("skinCluster", envelope, args, ports);
    const VtxAttribute attribute = attributeAt(this->cursor);
    json& inputs = report["inputs"];
    inputs.push_back(output("geomMatrix", geomMatrix));
    inputs.push_back(typedValue("matrix", "Mat4List", toJson(attribute.matrices)));
    inputs.push_back(typedValue("bindPreMatrix", "Mat4List", toJson(attribute.bindPreMatrices)));
    inputs.push_back(typedValue("weight", "FloatList", toJson(attribute.weights)));
    return report;
}

template Method method<ProxySkinCluster<Mesh>>();
template Method method<ProxySkinCluster<Curve>>();
template Method method<ProxySkinCluster<Surface>>();
template Method method<ProxySkinCluster<Lattice>>();

} // namespace zent
