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
    PointSine sine;
};

template <class T>
void ProxyDeformSine<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    const auto envelope = read<float>(args, 1);
    const auto handle = read<mat4>(args, 2);
    const auto wavelength = read<float>(args, 3);
    const auto amplitude = read<float>(args, 4);
    const auto offset = read<float>(args, 5);
    const auto lowBound = read<float>(args, 6);
    const auto highBound = read<float>(args, 7);
    const auto shape = onePointShape<T>(vec3(0.0f), matrixOf(this->input)); // its inverse is a point's
    sine = PointSine(matrixOf(shape), inverseMatrixOf(shape), envelope, handle, wavelength, amplitude, offset, lowBound,
                     highBound);
}

template <class T>
void ProxyDeformSine<T>::deform(T& point, unsigned int /*index*/) const {
    pointsOf(point)[0] = sine(pointsOf(point)[0]);
}

template Method method<ProxyDeformSine<Curve>>();
template Method method<ProxyDeformSine<Surface>>();

} // namespace zent
