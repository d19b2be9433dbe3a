#include "zent/nodes/curve_from_cv.h"
#include "zent/proxies/Plain.h"

namespace zent {

template <>
struct Inside<curve_from_cv> {
    template <class Values>
    void operator()(const Values& values, Curve& value) {
        IMPL_curve_from_cv(std::get<0>(values), std::get<1>(values), value);
    }
};

class ProxyCurveFromCV : public Plain<curve_from_cv> {
public:
    ProxyCurveFromCV() : Plain("curve_from_cv", "local") {}
};
template Method method<ProxyCurveFromCV>();

} // namespace zent
