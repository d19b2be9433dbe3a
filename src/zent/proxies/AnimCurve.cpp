#include "zent/nodes/animCurve.h"
#include "zent/proxies/Plain.h"

namespace zent {

template <>
struct Inside<animCurve> : Inside<IMPL_animCurve> {};

class ProxyAnimCurve : public Plain<animCurve> {
public:
    ProxyAnimCurve() : Plain("animCurve", "output") {}
};
template Method method<ProxyAnimCurve>();

} // namespace zent
