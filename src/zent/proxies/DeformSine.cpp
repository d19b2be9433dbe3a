#include "zent/nodes/deformSine.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/ProxyDeformer.h"

#include <array>

namespace zent {

/// The adapter of `deformSine<T>`; T is Curve or Surface.
template <class T>
class ProxyDeformSine : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("deformSine") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;
    Slot slot(unsigned int index, const EntryPlace& entry) override;
    void prepare() override;
    MethodInfo info() const { return this->deformerInfo(argumentsOf<deformSine<T>>()); }

private:
    mat4 handle{1.0f};
    std::array<float, 6> numbers{}; ///< envelope, wavelength, amplitude, offset, low bound, high bound
    PointSine sine;
};

template <class T>
void ProxyDeformSine<T>::init(const Arguments& args, const std::vector<Port>& ports) {
    ProxyDeformer<T>::init(args, ports);
    this->readInput(args, 0);
    numbers[0] = read<float>(args, 1);
    handle = read<mat4>(args, 2);
    for (unsigned int i = 1; i < numbers.size(); ++i) {
        numbers[i] = read<float>(args, 2 + i);
    }
    prepare();
}

template <class T>
void ProxyDeformSine<T>::prepare() {
    const auto shape = onePointShape<T>(vec3(0.0f), matrixOf(this->input)); // its inverse is a point's
    const auto& [envelope, wavelength, amplitude, offset, lowBound, highBound] = numbers;
    sine = PointSine(matrixOf(shape), inverseMatrixOf(shape), envelope, handle, wavelength, amplitude, offset, lowBound,
                     highBound);
}

template <class T>
Slot ProxyDeformSine<T>::slot(unsigned int index, const EntryPlace& entry) {
    switch (index) {
    case 0:
        return entrySlot(this->input, entry);
    case 1:
        return entrySlot(numbers[0], entry);
    case 2:
        return entrySlot(handle, entry);
    default:
        return index < 8 ? entrySlot(numbers[index - 2], entry) : Slot();
    }
}

template <class T>
void ProxyDeformSine<T>::deform(T& point, unsigned int /*index*/) const {
    pointsOf(point)[0] = sine(pointsOf(point)[0]);
}

template Method method<ProxyDeformSine<Curve>>();
template Method method<ProxyDeformSine<Surface>>();

} // namespace zent
