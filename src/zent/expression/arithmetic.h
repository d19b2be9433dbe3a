#pragma once

#include "zent/expression/Value.h"

#include <new>
#include <type_traits>

namespace zent {

/// Throws std::runtime_error for a division of integers that has no result; `operation` is its name in the text.
void requireDivisible(int a, int b, const char* operation);

/// The value takes the remainder: of two integers an integer, else std::fmod of the two as numbers.
void takeModulo(Value& a, const Value& b);

static_assert(std::is_trivially_destructible_v<Value>);

/// The value takes an alternative. What lies in its place may be nothing yet.
template <class T>
void assign(Value& value, T alternative) {
    ::new (static_cast<void*>(&value)) Value(std::in_place_type<T>, alternative);
}

/// The same from another value. By alternative: a copy of the whole record would wait until the parts last written
/// reach memory.
inline void assign(Value& to, const Value& from) {
    if (const double* number = std::get_if<double>(&from)) {
        return assign(to, *number); // what most are
    }
    std::visit([&to](auto alternative) { assign(to, alternative); }, from);
}

// The operations of the machine on integers and doubles. Sums, differences and products of integers wrap around in 32
// bits.
struct Add {
    int operator()(int a, int b) const { return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b)); }
    double operator()(double a, double b) const { return a + b; }
};

struct Subtract {
    int operator()(int a, int b) const { return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b)); }
    double operator()(double a, double b) const { return a - b; }
};

struct Multiply {
    int operator()(int a, int b) const { return static_cast<int>(static_cast<unsigned>(a) * static_cast<unsigned>(b)); }
    double operator()(double a, double b) const { return a * b; }
};

struct Divide {
    int operator()(int a, int b) const {
        requireDivisible(a, b, "division");
        return a / b;
    }
    double operator()(double a, double b) const { return a / b; }
};

struct Greater {
    template <class T>
    bool operator()(T a, T b) const {
        return a > b;
    }
};

struct Less {
    template <class T>
    bool operator()(T a, T b) const {
        return a < b;
    }
};

// Not the equality of doubles: NaN counts as equal to everything, since it is neither less nor greater.
struct Equal {
    template <class T>
    bool operator()(T a, T b) const {
        return !(a < b) && !(a > b);
    }
};

/// Gives `take` the result for two integers, or for two numbers of which an integer is widened. False for all other
/// alternatives.
template <class Operation, class Take>
[[gnu::always_inline]] inline bool combine(const Value& a, const Value& b, Operation operation, Take take) {
    const double* x = std::get_if<double>(&a);
    const double* y = std::get_if<double>(&b);
    if (x != nullptr && y != nullptr) {
        take(operation(*x, *y));
        return true;
    }
    const int* m = std::get_if<int>(&a);
    const int* n = std::get_if<int>(&b);
    if (m != nullptr && n != nullptr) {
        take(operation(*m, *n));
        return true;
    }
    if ((x == nullptr && m == nullptr) || (y == nullptr && n == nullptr)) {
        return false;
    }
    take(operation(x != nullptr ? *x : *m, y != nullptr ? *y : *n));
    return true;
}

} // namespace zent
