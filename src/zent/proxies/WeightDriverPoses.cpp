#include "zent/nodes/weightDriverPoses.h"
#include "zent/proxies/Plain.h"

namespace zent {

/// The two ints have no effect on the node, and their plugs are read as floats.
svec<float, 16> posesOfFloats(float, float, svec<float, 16> input, PoseElements poseInputs, PoseElements poseValues) {
    return weightDriverPoses(0, 0, std::move(input), std::move(poseInputs), std::move(poseValues));
}

class ProxyWeightDriverPoses : public Plain<posesOfFloats> {
public:
    ProxyWeightDriverPoses() : Plain("weightDriverPoses", "output") {}
};
template Method method<ProxyWeightDriverPoses>();

} // namespace zent
