#include "zent/nodes/motionPath.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyMotionPath : public Plain<motionPath> {
public:
    ProxyMotionPath() : Plain("motionPath", "allCoordinates") {}
};
template Method method<ProxyMotionPath>();

} // namespace zent
