#include "zent/nodes/deformBend.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `deformBendMesh`.
class ProxyDeformBendMesh : public ProxyDeformer<Mesh> {
public:
    std::string name() const override { return "deformBendMesh"; }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(Mesh& point, unsigned int index) const override;
    MethodInfo info() const { return deformerInfo(argumentsOf<deformBendMesh>()); }

private:
    PointBend bend;
};

void ProxyDeformBendMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args, 0);
    const float envelope = read<float>(args, 1);
    const mat4 handle = read<mat4>(args, 2);
    const float curvature = read<float>(args, 3);
    const float lowBound = read<float>(args, 4);
    const float highBound = read<float>(args, 5);
    const auto shape = onePointShape<Mesh>(vec3(0.0f), matrixOf(input)); // its inverse is a point's
    bend = PointBend(matrixOf(shape), inverseMatrixOf(shape), envelope, handle, curvature, lowBound, highBound);
}

void ProxyDeformBendMesh::deform(Mesh& point, unsigned int /*index*/) const {
    point.points[0] = bend(point.points[0]);
}

template Method method<ProxyDeformBendMesh>();

} // namespace zent
