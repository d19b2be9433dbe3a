#pragma once

#include "zent/proxies/InverseMatrix.h"

namespace zent {

/// The adapter of `inverseWorld`, which differs in its name only.
class ProxyInverseWorld : public ProxyInverseMatrix {
public:
    std::string name() const override { return "inverseWorld"; }
};

} // namespace zent
