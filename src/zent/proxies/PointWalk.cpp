#include "zent/proxies/PointWalk.h"

#include "zent/proxies/Proxy.h"
#include "zent/values/Compare.h"

namespace zent {

bool PointPair::agree(float epsilon) const {
    return check(maya, zent, epsilon);
}

std::unique_ptr<PointWalk> walkOf(const Proxy& proxy) {
    return dynamic_cast<const PointSource&>(proxy).walk();
}

} // namespace zent
