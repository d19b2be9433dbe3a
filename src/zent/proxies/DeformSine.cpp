#include "zent/proxies/DeformSine.h"

#include "zent/nodes/deformSine.h"
#include "zent/proxies/Binding.h"

namespace zent {

template <class T>
void ProxyDeformSine<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args.get(0));
    envelope = read<float>(args.get(1));
    handle = read<mat4>(args.get(2));
    wavelength = read<float>(args.get(3));
    amplitude = read<float>(args.get(4));
    offset = read<float>(args.get(5));
    lowBound = read<float>(args.get(6));
    highBound = read<float>(args.get(7));
}

template <class T>
void ProxyDeformSine<T>::deform(T& point, unsigned int /*index*/) const {
    deformSine<T>(point, envelope, handle, wavelength, amplitude, offset, lowBound, highBound);
}

template class ProxyDeformSine<Curve>;
template class ProxyDeformSine<Surface>;

} // namespace zent
