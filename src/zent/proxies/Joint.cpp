#include "zent/nodes/joint.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyJoint : public Plain<joint> {
public:
    ProxyJoint() : Plain("joint", "matrix") {}
};
template Method method<ProxyJoint>();

} // namespace zent
