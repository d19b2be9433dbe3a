#pragma once

#include "zent/proxies/DistanceBetweenTwoPoints.h"

namespace zent {

/// The adapter of `distanceDimShape`, which differs in its name only.
class ProxyDistanceDimShape : public ProxyDistanceBetweenTwoPoints {
public:
    std::string name() const override { return "distanceDimShape"; }
};

} // namespace zent
