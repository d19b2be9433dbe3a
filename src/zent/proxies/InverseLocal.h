#pragma once

#include "zent/proxies/InverseMatrix.h"

namespace zent {

/// The adapter of `inverseLocal`, which differs in its name only.
class ProxyInverseLocal : public ProxyInverseMatrix {
public:
    std::string name() const override { return "inverseLocal"; }
};

} // namespace zent
