#include "zent/nodes/ffd.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

#include <array>

namespace zent {

/// The adapter of `ffd<T>`; T is Mesh or Surface.
template <class T>
class ProxyFFD : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("ffd") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override;
    MethodInfo info() const { return this->deformerInfo(argumentsOf<ffd<T>>()); }

private:
    Lattice lattice;
    mat4 deformedLatticeMatrix{1.0f};
    mat4 baseLatticeMatrix{1.0f};
    bool local = true;
    std::array<unsigned int, 3> influence{};
    bool isPlaced = false;
    T placed; ///< a shape of one point that stands as the input does; its inverse is a point's
    std::function<vec3(vec3)> deformed;
};

template <class T>
void ProxyFFD<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    lattice = read<Lattice>(args, 1);
    deformedLatticeMatrix = read<mat4>(args, 2);
    baseLatticeMatrix = read<mat4>(args, 3);
    local = read<bool>(args, 4);
    for (unsigned int i = 0; i < influence.size(); ++i) {
        influence[i] = read<unsigned int>(args, 5 + i);
    }
    prepare();
}

template <class T>
void ProxyFFD<T>::prepare() {
    if (this->count() != 0) {
        if (const mat4 matrix = matrixOf(this->input); !isPlaced || matrix != matrixOf(placed)) {
            placed = onePointShape<T>(vec3(0.0f), matrix);
            isPlaced = true;
        }
        pointFFD(deformed, matrixOf(placed), inverseMatrixOf(placed), lattice, deformedLatticeMatrix, baseLatticeMatrix,
                 local, influence[0], influence[1], influence[2]);
    }
}

template <class T>
Slot ProxyFFD<T>::slot(unsigned int index, const EntryPlace& entry) {
    switch (index) {
    case 0:
        return entrySlot(this->input, entry);
    case 1:
        return entrySlot(lattice, entry);
    case 2:
        return entrySlot(deformedLatticeMatrix, entry);
    case 3:
        return entrySlot(baseLatticeMatrix, entry);
    case 4:
        return entrySlot(local, entry);
    default:
        return index < 8 ? entrySlot(influence[index - 5], entry) : Slot();
    }
}

template <class T>
void ProxyFFD<T>::deform(T& point, unsigned int /*index*/) const {
    pointsOf(point)[0] = deformed(pointsOf(point)[0]);
}

template Method method<ProxyFFD<Mesh>>();
template Method method<ProxyFFD<Surface>>();

} // namespace zent
