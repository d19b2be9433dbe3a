#pragma once

#include <cstddef>
#include <string>
#include <variant>

namespace zent {

/// Three doubles, the vector of the expression machine.
struct ValueVector {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// A stored value of no known kind, which no instruction takes.
struct UnknownValue {
    unsigned char index;
};

/// A value of the expression machine; the order of its alternatives is that of the stored form. The last one stands in
/// lists of constants only.
using Value = std::variant<bool, int, double, ValueVector, UnknownValue>;

/// What a value of the wrong alternative throws.
class UnexpectedIndex : public std::bad_variant_access {
public:
    const char* what() const noexcept override { return "Unexpected index"; }
};

/// The value as alternative T; UnexpectedIndex if it holds another.
template <class T>
const T& as(const Value& value) {
    if (const T* alternative = std::get_if<T>(&value)) {
        return *alternative;
    }
    throw UnexpectedIndex();
}

/// The value where a number is needed: a bool counts as 1 or 0, an integer is widened, a double stands, and a vector
/// counts as -1, which is a result and no error.
inline double toNumber(const Value& value) {
    switch (value.index()) {
    case 0:
        return *std::get_if<bool>(&value) ? 1.0 : 0.0;
    case 1:
        return *std::get_if<int>(&value);
    case 2:
        return *std::get_if<double>(&value);
    default:
        return -1.0;
    }
}

/// The size in bytes of a stored value: 24 for the alternative, the index at byte 24, padding.
inline constexpr std::size_t kStoredValueSize = 32;

/// Reads one stored value of `kStoredValueSize` bytes, little-endian. A bool is true for any byte but 0; the padding is
/// not read. An index above 3 gives an UnknownValue.
Value valueFromBytes(const char* record);

/// The value as text: true, 7, 3.5 (always with a point or an exponent), (1.0, 0.0, 0.5). Reads back exactly; an
/// unknown value, as "unknown kind 9", does not.
std::string toText(const Value& value);

} // namespace zent
