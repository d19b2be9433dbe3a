#include "zent/nodes/weightDriverDrivers.h"
#include "zent/proxies/Plain.h"

namespace zent {

template <>
struct Inside<weightDriverDrivers> {
    template <class Values>
    void operator()(const Values& values, svec<float, 16>& value) {
        std::apply([&](int, int, const auto&... rest) { poses.weigh(rest..., value); }, values);
    }
    MatrixPoses poses;
};

class ProxyWeightDriverDrivers : public Plain<weightDriverDrivers> {
public:
    ProxyWeightDriverDrivers() : Plain("weightDriverDrivers", "output") {}
};
template Method method<ProxyWeightDriverDrivers>();

} // namespace zent
