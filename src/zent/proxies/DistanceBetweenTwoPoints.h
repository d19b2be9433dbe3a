#pragma once

#include "zent/nodes/distanceBetween.h"
#include "zent/proxies/Plain.h"

namespace zent {

/// The adapter of `distanceBetweenTwoPoints`, and the base of one that differs in its name only.
class ProxyDistanceBetweenTwoPoints : public Plain<distanceBetweenTwoPoints> {
public:
    ProxyDistanceBetweenTwoPoints() : Plain("distanceBetweenTwoPoints", "distance") {}
};

} // namespace zent
