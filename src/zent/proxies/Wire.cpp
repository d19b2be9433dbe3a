#include "zent/proxies/Wire.h"

#include "zent/math/require.h"
#include "zent/nodes/wire.h"
#include "zent/proxies/Binding.h"

namespace zent {

template <class T>
void ProxyWire<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args.get(0));
    rotation = read<float>(args.get(1));
    baseWire = read<Curve>(args.get(2));
    deformedWire = read<Curve>(args.get(3));
    locatorParameters = read<svec<float, 8>>(args.get(4));
    locatorTwists = read<svec<float, 8>>(args.get(5));
    bindings = read<WireBindings>(args.get(6));
    requireAtLeast("bindings", bindings.size(), this->visitedCount(), "outputGeometry[0]");
    if (this->visitedCount() != 0) {
        requireWires(baseWire, deformedWire, locatorParameters, locatorTwists);
    }
}

template <class T>
void ProxyWire<T>::deform(T& point, unsigned int index) const {
    wire<T>(point, rotation, baseWire, deformedWire, locatorParameters, locatorTwists, {bindings[index]});
}

template class ProxyWire<Mesh>;
template class ProxyWire<Curve>;

} // namespace zent
