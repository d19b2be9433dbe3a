#include "zent/nodes/curveFromSurfaceIso.h"
#include "zent/proxies/Binding.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyCurveFromSurfaceIso : public Plain<curveFromSurfaceIso> {
public:
    ProxyCurveFromSurfaceIso() : Plain("curveFromSurfaceIso", "outputCurve") {}
    /// Adds the record's inputs.
    json closure(const Arguments& args, const std::vector<Port>& ports) const override;
};
template Method method<ProxyCurveFromSurfaceIso>();

json ProxyCurveFromSurfaceIso::closure(const Arguments& args, const std::vector<Port>& ports) const {
    json report = Proxy::closure(args, ports);
    report["inputs"] = results(input<Surface>("inputSurface", args, 0), input<int>("isoparmDirection", args, 1),
                               input<float>("isoparmValue", args, 2), input<float>("minValue", args, 3),
                               input<float>("maxValue", args, 4), input<bool>("relativeValue", args, 5));
    return report;
}

} // namespace zent
