#include "zent/ProxyDeformer.h"

#include "zent/Binding.h"
#include "zent/math/require.h"

#include <stdexcept>

namespace zent {

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
json ProxyDeformer<T>::mayaResult(const std::vector<Port>& /*ports*/) const {
    return results(typedValue("outputGeometry[0]", "Vertex", toJson(toWorld(output, pointsOf(output)[cursor]))));
}

template <class T>
json ProxyDeformer<T>::zentResult(const Arguments& /*args*/) const {
    T shape = onePointShape<T>(pointsOf(input)[cursor], matrixOf(input));
    deform(shape, cursor);
    return results(typedValue("Vertex", toJson(toWorld(shape, pointsOf(shape)[0]))));
}

template <class T>
void ProxyDeformer<T>::readInput(const Port& port) {
    input = read<T>(port);
    requireConsistent(input, "inputGeometry");
    requireAtLeast("inputGeometry", pointsOf(input).size(), visitedCount(), "outputGeometry[0]");
}

template <class T>
json ProxyDeformer<T>::deformerClosure(const char* node, float envelope, const Arguments& args,
                                       const std::vector<Port>& ports) const {
    json report = Proxy::closure(args, ports);
    report["node"] = node;
    report["inputs"] = results(zent::output("envelope", envelope),
                               typedValue("input[0].inputGeometry", "Vertex", toJson(pointsOf(input)[cursor])));
    return report;
}

template class ProxyDeformer<Mesh>;
template class ProxyDeformer<Curve>;
template class ProxyDeformer<Surface>;
template class ProxyDeformer<Lattice>;

} // namespace zent
