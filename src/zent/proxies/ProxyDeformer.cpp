#include "zent/proxies/ProxyDeformer.h"

#include "zent/math/require.h"
#include "zent/proxies/Binding.h"

#include <stdexcept>

namespace zent {

namespace {

ShapeLayout layoutOf(const Mesh& shape) {
    return {"mesh", pointCount(shape), {}, {}, {}, {}};
}
ShapeLayout layoutOf(const Curve& shape) {
    return {"curve", shape.cv.size(), {shape.degree}, {shape.form}, {shape.knots}, {}};
}
ShapeLayout layoutOf(const Surface& shape) {
    return {"surface",
            pointCount(shape),
            {shape.degreeU, shape.degreeV},
            {shape.formU, shape.formV},
            {shape.knotsU, shape.knotsV},
            {}};
}
ShapeLayout layoutOf(const Lattice& shape) {
    return {"lattice", pointCount(shape), {}, {}, {}, {shape.s, shape.t, shape.u}};
}

/// It deforms one shape of one point after the other in the same place, so that a point costs no allocation.
template <class T>
class DeformerWalk : public PointWalk {
public:
    DeformerWalk(const ProxyDeformer<T>& deformer, const T& input, const T& output)
        : deformer_(deformer), input_(input), output_(output),
          undeformed_(onePointShape<T>(vec3(0.0f), matrixOf(input))) {}

    unsigned int count() const override { return pointCount(output_); }
    ShapeLayout layout() const override { return layoutOf(output_); }
    vec3 maya(unsigned int index) const override { return toWorld(output_, pointsOf(output_)[index]); }
    vec3 zent(unsigned int index) override {
        shape_ = undeformed_;
        for (vec3& point : pointsOf(shape_)) { // a curve of one point has it twice
            point = pointsOf(input_)[index];
        }
        deformer_.deform(shape_, index);
        return toWorld(shape_, pointsOf(shape_)[0]);
    }

private:
    const ProxyDeformer<T>& deformer_;
    const T& input_;
    const T& output_;
    const T undeformed_;
    T shape_;
};

} // namespace

template <class T>
void ProxyDeformer<T>::init(const Arguments& /*args*/, const std::vector<Port>& ports) {
    output = result<T>(ports, 0);
    requireAtLeast("outputGeometry[0] control points", pointsOf(output).size(), count(), "its count");
    cursor = 0;
}

template <class T>
bool ProxyDeformer<T>::isDone() const {
    const unsigned int count = pointCount(output);
    if (count == 0) {
        throw std::runtime_error("Empty Maya Shape");
    }
    return cursor == count;
}

template <class T>
std::unique_ptr<PointWalk> ProxyDeformer<T>::walk() const {
    return std::make_unique<DeformerWalk<T>>(*this, input, output);
}

template <class T>
json ProxyDeformer<T>::mayaResult(const std::vector<Port>& /*ports*/) const {
    return results(zent::output("outputGeometry[0]", Vertex{walk()->maya(cursor)}));
}

template <class T>
json ProxyDeformer<T>::zentResult(const Arguments& /*args*/) const {
    return results(zent::output(Vertex{walk()->zent(cursor)}));
}

template <class T>
void ProxyDeformer<T>::readInput(const Arguments& args, unsigned int index) {
    input = read<T>(args, index);
    requireAtLeast("inputGeometry", pointsOf(input).size(), count(), "outputGeometry[0]");
}

template <class T>
json ProxyDeformer<T>::deformerClosure(const char* node, float envelope, const Arguments& args,
                                       const std::vector<Port>& ports) const {
    json report = Proxy::closure(args, ports);
    report["node"] = node;
    report["inputs"] = results(zent::output("envelope", envelope),
                               zent::output("input[0].inputGeometry", Vertex{pointsOf(input)[cursor]}));
    return report;
}

template <class T>
MethodInfo ProxyDeformer<T>::deformerInfo(std::vector<ValueInfo> arguments) const {
    return {{}, {}, true, {valueInfo<T>("outputGeometry[0]")}, std::move(arguments)};
}

template class ProxyDeformer<Mesh>;
template class ProxyDeformer<Curve>;
template class ProxyDeformer<Surface>;
template class ProxyDeformer<Lattice>;

} // namespace zent
