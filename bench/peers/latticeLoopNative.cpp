// Compiled for this processor, unlike all the rest: so nothing of the product is included here.
#include "latticeLoop.h"

namespace zent::peers {

#include "latticeLoop.inl"

void nativeLatticeLoop(const float* lattice, const float* from, float* to, std::size_t points) {
    latticeLoop(lattice, from, to, points);
}

} // namespace zent::peers
