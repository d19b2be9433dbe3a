#include "zent/proxies/ProxyDeformer.h"

#include "zent/math/require.h"
#include "zent/proxies/Binding.h"
#include "zent/values/Compare.h"

#include <stdexcept>

namespace zent {

bool PointPair::agree(float epsilon) const {
    return check(maya, zent, epsilon);
}

template <class T>
void ProxyDeformer<T>::init(const Arguments& /*args*/, const std::vector<Port>& ports) {
    output = result<T>(ports, 0);
    requireConsistent(output, "outputGeometry[0]");
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
vec3 ProxyDeformer<T>::mayaPoint(unsigned int index) const {
    return toWorld(output, pointsOf(output)[index]);
}

template <class T>
vec3 ProxyDeformer<T>::zentPoint(unsigned int index) const {
    T shape = onePointShape<T>(pointsOf(input)[index], matrixOf(input));
    deform(shape, index);
    return toWorld(shape, pointsOf(shape)[0]);
}

template <class T>
json ProxyDeformer<T>::mayaResult(const std::vector<Port>& /*ports*/) const {
    return results(zent::output("outputGeometry[0]", Vertex{mayaPoint(cursor)}));
}

template <class T>
json ProxyDeformer<T>::zentResult(const Arguments& /*args*/) const {
    return results(zent::output(Vertex{zentPoint(cursor)}));
}

template <class T>
void ProxyDeformer<T>::readInput(const Port& port) {
    input = read<T>(port);
    requireConsistent(input, "inputGeometry");
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
