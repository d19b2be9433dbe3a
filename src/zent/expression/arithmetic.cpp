#include "zent/expression/arithmetic.h"

#include "zent/math/require.h"

#include <cmath>
#include <limits>
#include <string>

namespace zent {

void requireDivisible(int a, int b, const char* operation) {
    if (b == 0) {
        fail(std::string("integer ") + operation + " of " + std::to_string(a) + " by zero in the expression");
    }
    if (b == -1 && a == std::numeric_limits<int>::min()) {
        fail(std::string("integer ") + operation + " of " + std::to_string(a) + " by -1 overflows in the expression");
    }
}

void takeModulo(Value& a, const Value& b) {
    const int* dividend = std::get_if<int>(&a);
    const int* divisor = std::get_if<int>(&b);
    if (dividend != nullptr && divisor != nullptr) {
        requireDivisible(*dividend, *divisor, "remainder");
        assign(a, *dividend % *divisor);
    } else {
        assign(a, std::fmod(toNumber(a), toNumber(b)));
    }
}

} // namespace zent
