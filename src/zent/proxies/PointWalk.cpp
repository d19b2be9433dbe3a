#include "zent/proxies/PointWalk.h"

#include "zent/proxies/Proxy.h"
#include "zent/values/Compare.h"

namespace zent {

bool PointPair::agree(float epsilon) const {
    return check(maya, zent, epsilon);
}

unsigned int PointWalk::firstOff(unsigned int from, float epsilon) {
    const unsigned int points = count();
    while (from < points && at(from).agree(epsilon)) {
        ++from;
    }
    return from;
}

std::unique_ptr<PointWalk> walkOf(const Proxy& proxy) {
    return dynamic_cast<const PointSource&>(proxy).walk();
}

} // namespace zent
