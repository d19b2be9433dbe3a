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

    PointBend bend;
    std::vector<char> listed; ///< by point
};

void ProxyDeformBendPartialMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args, 0);
    const float envelope = read<float>(args, 1);
    const mat4 handle = read<mat4>(args, 3);
    const float curvature = read<float>(args, 4);
    const float lowBound = read<float>(args, 5);
    const float highBound = read<float>(args, 6);
    const auto shape = onePointShape<Mesh>(vec3(0.0f), matrixOf(input)); // its inverse is a point's
    bend = PointBend(matrixOf(shape), inverseMatrixOf(shape), envelope, handle, curvature, lowBound, highBound);
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
    if (listed[index] != 0) {
        point.points[0] = bend(point.points[0]);
    }
}

template Method method<ProxyDeformBendPartialMesh>();

} // namespace zent
