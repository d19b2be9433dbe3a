#include "zent/nodes/deformBend.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

#include <algorithm>
#include <array>

namespace zent {

/// The adapter of `deformBendPartialMesh`.
class ProxyDeformBendPartialMesh : public ProxyDeformer<Mesh> {
public:
    std::string name() const override { return "deformBendPartialMesh"; }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(Mesh& point, unsigned int index) const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override;
    MethodInfo info() const { return deformerInfo(argumentsOf<deformBendPartialMesh>()); }

private:
    void split_attributes(const std::vector<unsigned int>& indices);

    float envelope = 0.0f;
    mat4 handle{1.0f};
    std::array<float, 3> numbers{}; ///< curvature, low bound, high bound
    PointBend bend;
    std::vector<char> listed; ///< by point
};

void ProxyDeformBendPartialMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args, 0);
    envelope = read<float>(args, 1);
    handle = read<mat4>(args, 3);
    for (unsigned int i = 0; i < numbers.size(); ++i) {
        numbers[i] = read<float>(args, 4 + i);
    }
    prepare();
    split_attributes(read<std::vector<unsigned int>>(args, 2));
}

void ProxyDeformBendPartialMesh::prepare() {
    const auto shape = onePointShape<Mesh>(vec3(0.0f), matrixOf(input)); // its inverse is a point's
    bend = PointBend(matrixOf(shape), inverseMatrixOf(shape), envelope, handle, numbers[0], numbers[1], numbers[2]);
}

Slot ProxyDeformBendPartialMesh::slot(unsigned int index, const EntryPlace& entry) {
    switch (index) {
    case 0:
        return entrySlot(input, entry);
    case 1:
        return entrySlot(envelope, entry);
    case 3:
        return entrySlot(handle, entry);
    default:
        return index > 3 && index < 7 ? entrySlot(numbers[index - 4], entry) : Slot();
    }
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
