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
    float envelope = 0.0f;
    mat4 handle{1.0f};
    float curvature = 0.0f;
    float lowBound = 0.0f;
    float highBound = 0.0f;
};

void ProxyDeformBendMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args, 0);
    envelope = read<float>(args, 1);
    handle = read<mat4>(args, 2);
    curvature = read<float>(args, 3);
    lowBound = read<float>(args, 4);
    highBound = read<float>(args, 5);
}

void ProxyDeformBendMesh::deform(Mesh& point, unsigned int /*index*/) const {
    deformBendMesh(point, envelope, handle, curvature, lowBound, highBound);
}

template Method method<ProxyDeformBendMesh>();

} // namespace zent
