#include "zent/proxies/DeformBendPartialMesh.h"

#include "zent/nodes/deformBend.h"
#include "zent/proxies/Binding.h"

#include <algorithm>

namespace zent {

void ProxyDeformBendPartialMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args.get(0));
    envelope = read<float>(args.get(1));
    handle = read<mat4>(args.get(3));
    curvature = read<float>(args.get(4));
    lowBound = read<float>(args.get(5));
    highBound = read<float>(args.get(6));
    split_attributes(read<std::vector<unsigned int>>(args.get(2)));
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

} // namespace zent
