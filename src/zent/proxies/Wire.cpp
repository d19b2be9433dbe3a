#include "zent/nodes/wire.h"
#include "zent/math/require.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `wire<T>`; T is Mesh or Curve.
template <class T>
class ProxyWire : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("wire") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override;
    MethodInfo info() const { return this->deformerInfo(argumentsOf<wire<T>>()); }

private:
    float rotation = 0.0f;
    Curve baseWire;
    Curve deformedWire;
    svec<float, 8> locatorParameters;
    svec<float, 8> locatorTwists;
    WireBindings bindings;
};

template <class T>
void ProxyWire<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    rotation = read<float>(args, 1);
    baseWire = read<Curve>(args, 2);
    deformedWire = read<Curve>(args, 3);
    locatorParameters = read<svec<float, 8>>(args, 4);
    locatorTwists = read<svec<float, 8>>(args, 5);
    bindings = read<WireBindings>(args, 6);
    requireAtLeast("bindings", bindings.size(), this->count(), "outputGeometry[0]");
    prepare();
}

template <class T>
void ProxyWire<T>::prepare() {
    if (this->count() != 0) {
        requireWires(baseWire, deformedWire, locatorParameters, locatorTwists);
    }
}

template <class T>
Slot ProxyWire<T>::slot(unsigned int index, const EntryPlace& entry) {
    switch (index) {
    case 0:
        return entrySlot(this->input, entry);
    case 1:
        return entrySlot(rotation, entry);
    case 2:
        return entrySlot(baseWire, entry);
    case 3:
        return entrySlot(deformedWire, entry);
    case 4:
        return entrySlot(locatorParameters, entry);
    case 5:
        return entrySlot(locatorTwists, entry);
    default:
        return {};
    }
}

template <class T>
void ProxyWire<T>::deform(T& point, unsigned int index) const {
    const vec3 point_world = toWorld(point, pointsOf(point)[0]);
    pointsOf(point)[0] = toObject(point, wirePoint(point_world, rotation, baseWire, deformedWire, locatorParameters,
                                                   locatorTwists, bindings[index]));
}

template Method method<ProxyWire<Mesh>>();
template Method method<ProxyWire<Curve>>();

} // namespace zent
