#include "zent/rig/Rig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

namespace {

std::atomic<std::size_t> allocations{0};

} // namespace

// Of this whole program, the libraries' too. What is not told here calls these.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* const place = std::malloc(size == 0 ? 1 : size)) {
        return place;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}
[[gnu::noinline]] void operator delete(void* place) noexcept {
    std::free(place);
}
[[gnu::noinline]] void operator delete(void* place, std::size_t /*size*/) noexcept {
    std::free(place);
}

namespace {

using zent::vec3;
using zent::rig::Rig;

/// The arm has constraints, a skin, IK, pose drivers, an expression, a lattice, blend shapes and a wire.
TEST(Allocations, NoneAfterTheFirstEvaluation) {
    const std::string folder = ZENT_EXAMPLES "/arm/";
    Rig rig = Rig::load(folder + "manifest.json", folder + "resource.bin", folder + "scene.json");
    const zent::rig::PlugId root = rig.input("arm.translate");
    const zent::rig::PlugId hand = rig.input("handControl.rotate");
    const auto move = [&](float by) {
        rig.set(root, vec3(by, 2.0f * by, 3.0f));
        rig.set(hand, vec3(0.1f * by, 0.2f, 0.3f));
        return rig.evaluate();
    };
    move(1.0f); // Eigen, the lists of a chain and the like find their size
    const std::size_t before = allocations;
    std::size_t evaluated = 0;
    for (int i = 0; i < 10; ++i) {
        evaluated += move(static_cast<float>(i) + 2.0f);
    }
    EXPECT_EQ(allocations - before, 0u);
    EXPECT_GT(evaluated, 10 * rig.records().size() / 2); // most of the arm hangs on its root
}

} // namespace
