#include "zent/proxies/WeightDriverPoses.h"

#include "zent/nodes/weightDriverPoses.h"
#include "zent/proxies/Binding.h"

namespace zent {

json ProxyWeightDriverPoses::mayaResult(const std::vector<Port>& ports) const {
    return results(output("output", result<svec<float, 16>>(ports, 0)));
}

json ProxyWeightDriverPoses::zentResult(const Arguments& args) const {
    // The two ints have no effect on the node, and their plugs are read as floats.
    read<float>(args.get(0));
    read<float>(args.get(1));
    return results(output(weightDriverPoses(0, 0, read<svec<float, 16>>(args.get(2)), read<PoseElements>(args.get(3)),
                                            read<PoseElements>(args.get(4)))));
}

} // namespace zent
