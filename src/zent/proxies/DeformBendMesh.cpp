#include "zent/nodes/deformBend.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

#include <array>

namespace zent {

/// The adapter of `deformBendMesh`.
class ProxyDeformBendMesh : public ProxyDeformer<Mesh> {
public:
    std::string name() const override { return "deformBendMesh"; }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(Mesh& point, unsigned int index) const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override;
    MethodInfo info() const { return deformerInfo(argumentsOf<deformBendMesh>()); }

private:
    float envelope = 0.0f;
    mat4 handle{1.0f};
    std::array<float, 3> numbers{}; ///< curvature, low bound, high bound
    PointBend bend;
};

void ProxyDeformBendMesh::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<Mesh>::init(args, ports);
    readInput(args, 0);
    envelope = read<float>(args, 1);
    handle = read<mat4>(args, 2);
    for (unsigned int i = 0; i < numbers.size(); ++i) {
        numbers[i] = read<float>(args, 3 + i);
    }
    prepare();
}

void ProxyDeformBendMesh::prepare() {
    const auto shape = onePointShape<Mesh>(vec3(0.0f), matrixOf(input)); // its inverse is a point's
    bend = PointBend(matrixOf(shape), inverseMatrixOf(shape), envelope, handle, numbers[0], numbers[1], numbers[2]);
}

Slot ProxyDeformBendMesh::slot(unsigned int index, const EntryPlace& entry) {
    switch (index) {
    case 0:
        return entrySlot(input, entry);
    case 1:
        return entrySlot(envelope, entry);
    case 2:
        return entrySlot(handle, entry);
    default:
        return index > 2 && index < 6 ? entrySlot(numbers[index - 3], entry) : Slot();
    }
}

void ProxyDeformBendMesh::deform(Mesh& point, unsigned int /*index*/) const {
    point.points[0] = bend(point.points[0]);
}

template Method method<ProxyDeformBendMesh>();

} // namespace zent
