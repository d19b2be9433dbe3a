#pragma once

#include "zent/geometry/weights.h"
#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `wire<T>`; T is Mesh or Curve.
template <class T>
class ProxyWire : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("wire") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;

private:
    float rotation = 0.0f;
    Curve baseWire;
    Curve deformedWire;
    svec<float, 8> locatorParameters;
    svec<float, 8> locatorTwists;
    WireBindings bindings;
};

extern template class ProxyWire<Mesh>;
extern template class ProxyWire<Curve>;

} // namespace zent
