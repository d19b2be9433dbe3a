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
    mat4 deformedLatticeMatrix{1.0f};
    mat4 baseLatticeMatrix{1.0f};
    bool local = false;
    unsigned int influenceS = 0;
    unsigned int influenceT = 0;
    unsigned int influenceU = 0;
};

template <class T>
void ProxyFFD<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    lattice = read<Lattice>(args, 1);
    deformedLatticeMatrix = read<mat4>(args, 2);
    baseLatticeMatrix = read<mat4>(args, 3);
    local = read<bool>(args, 4);
    influenceS = read<unsigned int>(args, 5);
    influenceT = read<unsigned int>(args, 6);
    influenceU = read<unsigned int>(args, 7);
    if (this->count() != 0) {
        requireLatticeWindows(lattice, local, influenceS, influenceT, influenceU);
    }
}

template <class T>
void ProxyFFD<T>::deform(T& point, unsigned int /*index*/) const {
    ffd<T>(point, lattice, deformedLatticeMatrix, baseLatticeMatrix, local, influenceS, influenceT, influenceU);
}

template Method method<ProxyFFD<Mesh>>();
template Method method<ProxyFFD<Surface>>();

} // namespace zent
