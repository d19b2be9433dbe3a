#include "zent/proxies/DeformBendMesh.h"

#include "zent/nodes/deformBend.h"
#include "zent/proxies/Binding.h"

namespace zent {

void ProxyDeformBendMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args.get(0));
    envelope = read<float>(args.get(1));
    handle = read<mat4>(args.get(2));
    curvature = read<float>(args.get(3));
    lowBound = read<float>(args.get(4));
    highBound = read<float>(args.get(5));
}

void ProxyDeformBendMesh::deform(Mesh& point, unsigned int /*index*/) const {
    deformBendMesh(point, envelope, handle, curvature, lowBound, highBound);
}

} // namespace zent
