#include "zent/proxies/FFD.h"

#include "zent/nodes/ffd.h"
#include "zent/proxies/Binding.h"

namespace zent {

template <class T>
void ProxyFFD<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args.get(0));
    lattice = read<Lattice>(args.get(1));
    deformedLatticeMatrix = read<mat4>(args.get(2));
    baseLatticeMatrix = read<mat4>(args.get(3));
    local = read<bool>(args.get(4));
    influenceS = read<unsigned int>(args.get(5));
    influenceT = read<unsigned int>(args.get(6));
    influenceU = read<unsigned int>(args.get(7));
    if (this->visitedCount() != 0) {
        requireLatticeWindows(lattice, local, influenceS, influenceT, influenceU);
    }
}

template <class T>
void ProxyFFD<T>::deform(T& point, unsigned int /*index*/) const {
    ffd<T>(point, lattice, deformedLatticeMatrix, baseLatticeMatrix, local, influenceS, influenceT, influenceU);
}

template class ProxyFFD<Mesh>;
template class ProxyFFD<Surface>;

} // namespace zent
