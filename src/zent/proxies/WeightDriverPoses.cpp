#include "zent/nodes/weightDriverPoses.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyWeightDriverPoses : public Plain<weightDriverPoses> {
public:
    ProxyWeightDriverPoses() : Plain("weightDriverPoses", "output") {}
    json zentResult(const Arguments& args) const override {
        // The two ints have no effect on the node, and their plugs are read as floats.
        Input::read<0>(args);
        Input::read<1>(args);
        return results(
            output(weightDriverPoses(0, 0, Input::read<2>(args), Input::read<3>(args), Input::read<4>(args))));
    }
    MethodInfo info() const { return {{}, {}, false, {valueInfo<svec<float, 16>>("output")}, Input::info()}; }

private:
    using Input = Inputs<float, float, svec<float, 16>, PoseElements, PoseElements>;
};
template Method method<ProxyWeightDriverPoses>();

} // namespace zent
