#pragma once

#include <cstddef>

namespace zent::peers {

/// A lattice of 4 by 4 by 4 over points of 3 floats, 16 side by side; `portable` is compiled as the rest is, `native`
/// for this processor.
void portableLatticeLoop(const float* lattice, const float* from, float* to, std::size_t points);
void nativeLatticeLoop(const float* lattice, const float* from, float* to, std::size_t points);

} // namespace zent::peers
