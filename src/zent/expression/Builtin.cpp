#include "zent/expression/Builtin.h"

#include "zent/expression/arithmetic.h"
#include "zent/math/require.h"

#include <array>
#include <cmath>

namespace zent {

namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;

ValueVector operator+(ValueVector a, ValueVector b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

ValueVector operator*(double factor, ValueVector v) {
    return {factor * v.x, factor * v.y, factor * v.z};
}

ValueVector cross(ValueVector a, ValueVector b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(ValueVector a, ValueVector b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double mag(ValueVector v) {
    return std::sqrt(dot(v, v));
}

// The axis is not normalised: one of another length than 1 does not give a pure rotation.
ValueVector rotate(ValueVector v, ValueVector axis, double angle) {
    const ValueVector q = std::sin(angle * 0.5) * axis;
    const ValueVector qv = cross(q, v);
    return v + 2.0 * std::cos(angle * 0.5) * qv + 2.0 * cross(q, qv);
}

void takeAbsolute(const Value& value, Value& result) {
    switch (value.index()) {
    case 0:
        return assign(result, 1); // whichever bool it is: deliberate
    case 1: {
        const int number = *std::get_if<int>(&value);
        return assign(result, number < 0 ? static_cast<int>(0U - static_cast<unsigned>(number)) : number);
    }
    case 2:
        return assign(result, std::abs(*std::get_if<double>(&value)));
    default: {
        const auto v = *std::get_if<ValueVector>(&value);
        return assign(result, ValueVector{std::abs(v.x), std::abs(v.y), std::abs(v.z)});
    }
    }
}

double minimum(double a, double b) {
    return b < a ? b : a;
}

double maximum(double a, double b) {
    return b > a ? b : a;
}

// The bounds are not held against each other.
double clampNumber(double x, double low, double high) {
    return x < low ? low : minimum(high, x);
}

int signOf(double number) {
    return number > 0.0 ? 1 : number < 0.0 ? -1 : 0;
}

ValueVector vectorAt(const Value* args, int index) {
    return as<ValueVector>(args[index]);
}

template <double (*F)(double)>
void unary(const Value* args, Value& result) {
    assign(result, F(toNumber(args[0])));
}

template <double (*F)(double)>
void unaryOfDegrees(const Value* args, Value& result) {
    assign(result, F(toNumber(args[0]) * kRadiansPerDegree));
}

template <double (*F)(double, double)>
void binary(const Value* args, Value& result) {
    assign(result, F(toNumber(args[0]), toNumber(args[1])));
}

void takeAngle(const Value* args, Value& result) {
    const ValueVector a = vectorAt(args, 0);
    const ValueVector b = vectorAt(args, 1);
    assign(result, std::acos(dot(a, b) / (mag(a) * mag(b))));
}

void takeUnit(const Value* args, Value& result) {
    const ValueVector v = vectorAt(args, 0);
    assign(result, (1.0 / mag(v)) * v);
}

void takeRotated(const Value* args, Value& result) {
    assign(result, rotate(vectorAt(args, 0), vectorAt(args, 1), toNumber(args[2])));
}

void takeClamped(const Value* args, Value& result) {
    assign(result, clampNumber(toNumber(args[0]), toNumber(args[1]), toNumber(args[2])));
}

void takeSign(const Value* args, Value& result) {
    assign(result, signOf(toNumber(args[0])));
}

double radians(double degrees) {
    return degrees * kRadiansPerDegree;
}

double degrees(double radians) {
    return radians * kDegreesPerRadian;
}

double atan2OfDegrees(double y, double x) {
    return std::atan2(y * kRadiansPerDegree, x * kRadiansPerDegree);
}

struct Row {
    const char* name;
    unsigned arity;
    Builtin::Native native;
};

// The order fixes the numbers. The inverse functions of degrees convert their argument, not their result: deliberate.
constexpr std::array<Row, 37> kNatives{{
    {"angle", 2, takeAngle},
    {"cross", 2, [](const Value* args, Value& result) { assign(result, cross(vectorAt(args, 0), vectorAt(args, 1))); }},
    {"dot", 2, [](const Value* args, Value& result) { assign(result, dot(vectorAt(args, 0), vectorAt(args, 1))); }},
    {"mag", 1, [](const Value* args, Value& result) { assign(result, mag(vectorAt(args, 0))); }},
    {"rot", 3, takeRotated},
    {"unit", 1, takeUnit},
    {"abs", 1, [](const Value* args, Value& result) { takeAbsolute(args[0], result); }},
    {"ceil", 1, unary<std::ceil>},
    {"floor", 1, unary<std::floor>},
    {"clamp", 3, takeClamped},
    {"min", 2, binary<minimum>},
    {"max", 2, binary<maximum>},
    {"sign", 1, takeSign},
    {"trunc", 1, unary<std::trunc>},
    {"exp", 1, unary<std::exp>},
    {"log", 1, unary<std::log>},
    {"log10", 1, unary<std::log10>},
    {"pow", 2, binary<std::pow>},
    {"sqrt", 1, unary<std::sqrt>},
    {"abs", 1, [](const Value* args, Value& result) { takeAbsolute(args[0], result); }},
    {"cos", 1, unary<std::cos>},
    {"cosd", 1, unaryOfDegrees<std::cos>},
    {"sin", 1, unary<std::sin>},
    {"sind", 1, unaryOfDegrees<std::sin>},
    {"tan", 1, unary<std::tan>},
    {"tand", 1, unaryOfDegrees<std::tan>},
    {"acos", 1, unary<std::acos>},
    {"acosd", 1, unaryOfDegrees<std::acos>},
    {"asin", 1, unary<std::asin>},
    {"asind", 1, unaryOfDegrees<std::asin>},
    {"atan", 1, unary<std::atan>},
    {"atand", 1, unaryOfDegrees<std::atan>},
    {"atan2", 2, binary<std::atan2>},
    {"atan2d", 2, binary<atan2OfDegrees>},
    {"hypot", 2, binary<std::hypot>},
    {"deg_to_rad", 1, unary<radians>},
    {"rad_to_deg", 1, unary<degrees>},
}};

constexpr unsigned short complement(unsigned number) {
    return static_cast<unsigned short>(~number);
}

std::size_t indexOf(unsigned short id) {
    const std::size_t index = complement(id);
    if (index >= kNatives.size()) {
        fail("there is no built-in " + std::to_string(id) + ", the lowest number is " +
             std::to_string(complement(kNatives.size() - 1)));
    }
    return index;
}

} // namespace

void Builtin::init() {
    natives();
    LUT_address();
}

const Builtin::Function& Builtin::get_function(unsigned short id) {
    return natives()[indexOf(id)];
}

Builtin::Native Builtin::native(unsigned short id) {
    return kNatives[indexOf(id)].native;
}

Builtin::Native Builtin::nativeOf(unsigned short id, unsigned count) {
    const Row& row = kNatives[indexOf(id)];
    return count < row.arity ? nullptr : row.native;
}

unsigned Builtin::arity(unsigned short id) {
    return kNatives[indexOf(id)].arity;
}

const char* Builtin::name(unsigned short id) {
    const std::size_t index = complement(id);
    return index < kNatives.size() ? kNatives[index].name : nullptr;
}

const std::vector<Builtin::Function>& Builtin::natives() {
    static const std::vector<Function> sNatives = [] {
        std::vector<Function> functions;
        functions.reserve(kNatives.size());
        for (const Row& row : kNatives) {
            functions.emplace_back([native = row.native](Value* args) {
                Value result;
                native(args, result);
                return result;
            });
        }
        return functions;
    }();
    return sNatives;
}

const std::map<std::string, unsigned short>& Builtin::LUT_address() {
    static const std::map<std::string, unsigned short> sLUT_address = [] {
        std::map<std::string, unsigned short> numbers;
        for (unsigned index = 0; index < kNatives.size(); ++index) {
            numbers[kNatives[index].name] = complement(index); // "abs" stands twice, the later number stays
        }
        return numbers;
    }();
    return sLUT_address;
}

} // namespace zent
