#include "zent/nodes/ffd.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `ffd<T>`; T is Mesh or Surface.
template <class T>
class ProxyFFD : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("ffd") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    MethodInfo info() const { return this->deformerInfo(argumentsOf<ffd<T>>()); }

private:
    Lattice lattice;
    std::function<vec3(vec3)> deformed;
};

template <class T>
void ProxyFFD<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    lattice = read<Lattice>(args, 1);
    const auto deformedLatticeMatrix = read<mat4>(args, 2);
    const auto baseLatticeMatrix = read<mat4>(args, 3);
    const auto local = read<bool>(args, 4);
    const auto influenceS = read<unsigned int>(args, 5);
    const auto influenceT = read<unsigned int>(args, 6);
    const auto influenceU = read<unsigned int>(args, 7);
    if (this->count() != 0) {
        const auto shape = onePointShape<T>(vec3(0.0f), matrixOf(this->input)); // its inverse is a point's
        deformed = pointFFD(matrixOf(shape), inverseMatrixOf(shape), lattice, deformedLatticeMatrix, baseLatticeMatrix,
                            local, influenceS, influenceT, influenceU);
    }
}

template <class T>
void ProxyFFD<T>::deform(T& point, unsigned int /*index*/) const {
    pointsOf(point)[0] = deformed(pointsOf(point)[0]);
}

template Method method<ProxyFFD<Mesh>>();
template Method method<ProxyFFD<Surface>>();

} // namespace zent
