#include "zent/nodes/deformSine.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `deformSine<T>`; T is Curve or Surface.
template <class T>
class ProxyDeformSine : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("deformSine") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    MethodInfo info() const { return this->deformerInfo(argumentsOf<deformSine<T>>()); }

private:
    float envelope = 0.0f;
    mat4 handle{1.0f};
    float wavelength = 0.0f;
    float amplitude = 0.0f;
    float offset = 0.0f;
    float lowBound = 0.0f;
    float highBound = 0.0f;
};

template <class T>
void ProxyDeformSine<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    envelope = read<float>(args, 1);
    handle = read<mat4>(args, 2);
    wavelength = read<float>(args, 3);
    amplitude = read<float>(args, 4);
    offset = read<float>(args, 5);
    lowBound = read<float>(args, 6);
    highBound = read<float>(args, 7);
}

template <class T>
void ProxyDeformSine<T>::deform(T& point, unsigned int /*index*/) const {
    deformSine<T>(point, envelope, handle, wavelength, amplitude, offset, lowBound, highBound);
}

template Method method<ProxyDeformSine<Curve>>();
template Method method<ProxyDeformSine<Surface>>();

} // namespace zent
