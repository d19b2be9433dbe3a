#include "zent/nodes/deformBend.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

#include <algorithm>

namespace zent {

/// The adapter of `deformBendPartialMesh`.
class ProxyDeformBendPartialMesh : public ProxyDeformer<Mesh> {
public:
    std::string name() const override { return "deformBendPartialMesh"; }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(Mesh& point, unsigned int index) const override;
    MethodInfo info() const { return deformerInfo(argumentsOf<deformBendPartialMesh>()); }

private:
    void split_attributes(const std::vector<unsigned int>& indices);

    float envelope = 0.0f;
    mat4 handle{1.0f};
    float curvature = 0.0f;
    float lowBound = 0.0f;
    float highBound = 0.0f;
    std::vector<char> listed; ///< by point
};

void ProxyDeformBendPartialMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args, 0);
    envelope = read<float>(args, 1);
    handle = read<mat4>(args, 3);
    curvature = read<float>(args, 4);
    lowBound = read<float>(args, 5);
    highBound = read<float>(args, 6);
    split_attributes(read<std::vector<unsigned int>>(args, 2));
}

// By binary search, so that an unsorted list may lose points here that it names for the whole-shape function.
void ProxyDeformBendPartialMesh::split_attributes(const std::vector<unsigned int>& indices) {
    listed.resize(input.points.size());
    for (unsigned int i = 0; i < listed.size(); ++i) {
        listed[i] = std::binary_search(indices.begin(), indices.end(), i) ? 1 : 0;
    }
}

void ProxyDeformBendPartialMesh::deform(Mesh& point, unsigned int index) const {
    std::vector<unsigned int> indices;
    if (listed[index] != 0) {
        indices.push_back(0u);
    }
    deformBendPartialMesh(point, envelope, std::move(indices), handle, curvature, lowBound, highBound);
}

template Method method<ProxyDeformBendPartialMesh>();

} // namespace zent
