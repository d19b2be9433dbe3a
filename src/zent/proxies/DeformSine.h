#pragma once

#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `deformSine<T>`; T is Curve or Surface.
template <class T>
class ProxyDeformSine : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("deformSine") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;

private:
    float envelope = 0.0f;
    mat4 handle{1.0f};
    float wavelength = 0.0f;
    float amplitude = 0.0f;
    float offset = 0.0f;
    float lowBound = 0.0f;
    float highBound = 0.0f;
};

extern template class ProxyDeformSine<Curve>;
extern template class ProxyDeformSine<Surface>;

} // namespace zent
