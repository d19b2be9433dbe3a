#include "zent/nodes/pointConstraint.h"
#include "zent/version.h"

#include <cstdio>

static_assert(ZENT_VERSION_MAJOR == 1);

int main() {
    const zent::mat4 identity(1.0f);
    const zent::vec3 zero(0.0f);
    const zent::vec3 position =
        zent::pointConstraint(identity, zero, zero, zero, {0.5f, 0.5f}, zero, {identity, identity},
                              {zent::vec3(2.0f, 0.0f, 0.0f), zent::vec3(0.0f, 4.0f, 0.0f)}, {zero, zero});
    std::printf("%g %g %g\n", static_cast<double>(position.x), static_cast<double>(position.y),
                static_cast<double>(position.z));
    return position == zent::vec3(1.0f, 2.0f, 0.0f) ? 0 : 1;
}
