#include "latticeLoop.h"

namespace zent::peers {

#include "latticeLoop.inl"

void portableLatticeLoop(const float* lattice, const float* from, float* to, std::size_t points) {
    latticeLoop(lattice, from, to, points);
}

} // namespace zent::peers
