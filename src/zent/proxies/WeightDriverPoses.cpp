#include "zent/nodes/weightDriverPoses.h"
#include "zent/proxies/Plain.h"

namespace zent {

/// The two ints have no effect on the node, and their plugs are read as floats.
svec<float, 16> posesOfFloats(float, float, svec<float, 16> input, PoseElements poseInputs, PoseElements poseValues) {
    return weightDriverPoses(0, 0, std::move(input), std::move(poseInputs), std::move(poseValues));
}

template <>
struct Inside<posesOfFloats> {
    template <class Values>
    void operator()(const Values& values, svec<float, 16>& value) {
        poses.weigh(std::get<2>(values), std::get<3>(values), std::get<4>(values), value);
    }
    ValuePoses poses;
};

class ProxyWeightDriverPoses : public Plain<posesOfFloats> {
public:
    ProxyWeightDriverPoses() : Plain("weightDriverPoses", "output") {}
};
template Method method<ProxyWeightDriverPoses>();

} // namespace zent
