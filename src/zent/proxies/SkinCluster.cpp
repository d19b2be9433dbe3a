#include "zent/proxies/SkinCluster.h"

#include "zent/Binding.h"
#include "zent/math/require.h"
#include "zent/nodes/skin.h"

namespace zent {

template <class T>
void ProxySkinCluster<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    envelope = read<float>(args.get(0));
    this->readInput(args.get(1));
    geomMatrix = read<mat4>(args.get(2));
    const auto matrix = read<std::vector<mat4>>(args.get(3));
    const auto bindPreMatrix = read<std::vector<mat4>>(args.get(4));
    split_attributes(matrix, bindPreMatrix, read<SkinWeights>(args.get(5)));
}

template <class T>
void ProxySkinCluster<T>::split_attributes(const std::vector<mat4>& matrix, const std::vector<mat4>& bindPreMatrix,
                                           const SkinWeights& weights) {
    const unsigned int count = pointCount(this->input);
    std::vector<unsigned int> influenceCounts(count, 0u);
    for (std::size_t k = 0; k < weights.size(); ++k) {
        const auto& [vertex, influence, weight] = weights[k];
        requireIndex("weightList", k, vertex, count, "inputGeometry");
        requireIndex("weightList's influences", k, influence, matrix.size(), "matrix");
        requireIndex("weightList's influences", k, influence, bindPreMatrix.size(), "bindPreMatrix");
        ++influenceCounts[vertex];
    }
    attributes.assign(count, {});
    for (unsigned int i = 0; i < count; ++i) {
        attributes[i].matrices.reserve(influenceCounts[i]);
        attributes[i].bindPreMatrices.reserve(influenceCounts[i]);
        attributes[i].weights.reserve(influenceCounts[i]);
    }
    for (const auto& [vertex, influence, weight] : weights) {
        VtxAttribute& attribute = attributes[vertex];
        attribute.matrices.push_back(matrix[influence]);
        attribute.bindPreMatrices.push_back(bindPreMatrix[influence]);
        attribute.weights.push_back(weight);
    }
}

template <class T>
void ProxySkinCluster<T>::deform(T& point, unsigned int index) const {
    const VtxAttribute& attribute = attributes.at(index);
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
    const VtxAttribute& attribute = attributes.at(this->cursor);
    json& inputs = report["inputs"];
    inputs.push_back(output("geomMatrix", geomMatrix));
    inputs.push_back(typedValue("matrix", "Mat4List", toJson(attribute.matrices)));
    inputs.push_back(typedValue("bindPreMatrix", "Mat4List", toJson(attribute.bindPreMatrices)));
    inputs.push_back(typedValue("weight", "FloatList", toJson(attribute.weights)));
    return report;
}

template class ProxySkinCluster<Mesh>;
template class ProxySkinCluster<Curve>;
template class ProxySkinCluster<Surface>;
template class ProxySkinCluster<Lattice>;

} // namespace zent
