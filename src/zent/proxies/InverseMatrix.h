#pragma once

#include "zent/nodes/inverseMatrix.h"
#include "zent/proxies/Plain.h"

namespace zent {

/// The adapter of `inverseMatrix`, and the base of those that differ in their name only.
class ProxyInverseMatrix : public Plain<inverseMatrix> {
public:
    ProxyInverseMatrix() : Plain("inverseMatrix", "inverseMatrix") {}
};

} // namespace zent
