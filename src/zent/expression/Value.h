#pragma once

#include <variant>

namespace zent {

/// Three doubles, the vector of the expression machine.
struct ValueVector {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// A value of the expression machine; the order of its alternatives is that of the stored form.
using Value = std::variant<bool, int, double, ValueVector>;

} // namespace zent
