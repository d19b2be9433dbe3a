#include "zent/proxies/CurveFromSurfaceIso.h"

#include "zent/nodes/curveFromSurfaceIso.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyCurveFromSurfaceIso::mayaResult(const std::vector<Port>& ports) const {
    return results(output("outputCurve", result<Curve>(ports, 0)));
}

json ProxyCurveFromSurfaceIso::zentResult(const Arguments& args) const {
    return results(output(call<curveFromSurfaceIso>(args)));
}

json ProxyCurveFromSurfaceIso::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = Proxy::closure(args, ports);
    report["inputs"] = results(input<Surface>("inputSurface", args, 0), input<int>("isoparmDirection", args, 1),
                               input<float>("isoparmValue", args, 2), input<float>("minValue", args, 3),
                               input<float>("maxValue", args, 4), input<bool>("relativeValue", args, 5));
    return report;
}

} // namespace zent
