#include "zent/proxies/ProxyDeformer.h"

#include "zent/math/require.h"
#include "zent/proxies/Binding.h"
#include "zent/values/Compare.h"

#include <stdexcept>

namespace zent {

namespace {

json mayaVertex(vec3 point) {
    return results(typedValue("outputGeometry[0]", "Vertex", toJson(point)));
}

json zentVertex(vec3 point) {
    return results(typedValue("Vertex", toJson(point)));
}

} // namespace

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
vec3 ProxyDeformer<T>::mayaPoint() const {
    return toWorld(output, pointsOf(output)[cursor]);
}

template <class T>
vec3 ProxyDeformer<T>::zentPoint() const {
    T shape = onePointShape<T>(pointsOf(input)[cursor], matrixOf(input));
    deform(shape, cursor);
    return toWorld(shape, pointsOf(shape)[0]);
}

template <class T>
json ProxyDeformer<T>::mayaResult(const std::vector<Port>& /*ports*/) const {
    return mayaVertex(mayaPoint());
}

template <class T>
json ProxyDeformer<T>::zentResult(const Arguments& /*args*/) const {
    return zentVertex(zentPoint());
}

template <class T>
bool ProxyDeformer<T>::agree(const std::vector<Port>& /*ports*/, const Arguments& /*args*/, float epsilon, json& maya,
                             json& zent) const {
    const vec3 expected = mayaPoint();
    const vec3 actual = zentPoint();
    if (check(expected, actual, epsilon)) {
        return true;
    }
    maya = mayaVertex(expected);
    zent = zentVertex(actual);
    return false;
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
