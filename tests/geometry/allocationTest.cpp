#include "geometry/recursiveSpline.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {
std::size_t allocations = 0;
}

// This program counts: every allocation of any test in it goes through here.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace zent::test {
namespace {

TEST(Evaluation, NeverAllocates) {
    const Curve curve(5, kFormOpen, scatterPoints(9, 1), unevenKnots(9, 5, kFormOpen), kShear);
    const Surface surface(5, 3, kFormOpen, kFormOpen, unevenKnots(9, 5, kFormOpen), unevenKnots(6, 3, kFormOpen),
                          scatterPoints(54, 2), kShear);
    const std::size_t before = allocations;
    ASSERT_NE(before, 0u); // the records above are counted
    vec3 sum(0.0f);
    for (float u = 0.0f; u < 9.0f; u += 0.25f) {
        sum += curve.localPoint(u) + curve.dPdU(u) + curve.d2PdU2(u) + curve.arcLength(0.0f, u);
        sum += surface.localPoint(u, u) + surface.dPdU(u, u) + surface.dPdV(u, u);
    }
    EXPECT_EQ(allocations, before);
    EXPECT_FALSE(std::isnan(sum.x));
}

} // namespace
} // namespace zent::test
