#include "zent/expression/Builtin.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace zent {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kQuarterTurn = 1.5707963267948966;

bool near(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= 1e-14 * (1.0 + std::abs(b));
}

bool near(const Value& a, const Value& b) {
    if (a.index() != b.index()) {
        return false;
    }
    if (const auto* v = std::get_if<ValueVector>(&a)) {
        const auto& w = std::get<ValueVector>(b);
        return near(v->x, w.x) && near(v->y, w.y) && near(v->z, w.z);
    }
    return near(toNumber(a), toNumber(b));
}

TEST(Builtin, EveryNumberIsItsFunction) {
    const ValueVector x{1, 0, 0};
    const ValueVector y{0, 1, 0};
    const ValueVector z{0, 0, 1};
    const ValueVector zero{};
    struct Case {
        unsigned short number;
        const char* name;
        std::vector<Value> arguments;
        Value expected;
    };
    const Case cases[] = {
        {0xFFFF, "angle", {x, ValueVector{0, 5, 0}}, kQuarterTurn},
        {0xFFFF, "angle", {x, zero}, kNaN},
        {0xFFFE, "cross", {x, y}, z},
        {0xFFFE, "cross", {ValueVector{1, 2, 3}, ValueVector{4, 5, 6}}, ValueVector{-3, 6, -3}},
        {0xFFFD, "dot", {ValueVector{1, 2, 3}, ValueVector{4, 5, 6}}, 32.0},
        {0xFFFC, "mag", {ValueVector{2, 3, 6}}, 7.0},
        {0xFFFB, "rot", {x, z, kQuarterTurn}, y},
        // An axis of length 2: q = (0, 0, sqrt 2), so v + 2 c (q x v) + 2 q x (q x v) = (1 - 4, 2, 0).
        {0xFFFB, "rot", {x, ValueVector{0, 0, 2}, kQuarterTurn}, ValueVector{-3, 2, 0}},
        {0xFFFA, "unit", {ValueVector{0, 0, -4}}, ValueVector{0, 0, -1}},
        {0xFFFA, "unit", {zero}, ValueVector{kNaN, kNaN, kNaN}},
        {0xFFF9, "abs", {-2.5}, 2.5},
        {0xFFF8, "ceil", {-1.5}, -1.0},
        {0xFFF8, "ceil", {2}, 2.0},
        {0xFFF7, "floor", {-1.5}, -2.0},
        {0xFFF6, "clamp", {5, 1, 3}, 3.0},
        {0xFFF6, "clamp", {0, 1, 3}, 1.0},
        {0xFFF6, "clamp", {2, 1, 3}, 2.0},
        {0xFFF6, "clamp", {2, 3, 1}, 3.0}, // bounds the wrong way round
        {0xFFF6, "clamp", {4, 3, 1}, 1.0},
        {0xFFF5, "min", {2, 1}, 1.0},
        {0xFFF5, "min", {zero, 0}, -1.0},
        {0xFFF5, "min", {1, kNaN}, 1.0},
        {0xFFF5, "min", {kNaN, 1}, kNaN},
        {0xFFF4, "max", {2, 1}, 2.0},
        {0xFFF4, "max", {1, 2.5}, 2.5},
        {0xFFF3, "sign", {0.25}, 1},
        {0xFFF3, "sign", {-0.0}, 0},
        {0xFFF3, "sign", {-7}, -1},
        {0xFFF3, "sign", {x}, -1},
        {0xFFF3, "sign", {kNaN}, 0},
        {0xFFF2, "trunc", {-1.75}, -1.0},
        {0xFFF1, "exp", {1}, 2.718281828459045},
        {0xFFF0, "log", {2.718281828459045}, 1.0},
        {0xFFF0, "log", {false}, -kInfinity},
        {0xFFEF, "log10", {1000}, 3.0},
        {0xFFEE, "pow", {2, 10}, 1024.0},
        {0xFFED, "sqrt", {2.25}, 1.5},
        {0xFFED, "sqrt", {x}, kNaN}, // of -1
        {0xFFEC, "abs", {ValueVector{-1, 2, -3}}, ValueVector{1, 2, 3}},
        {0xFFEC, "abs", {-7}, 7},
        {0xFFEC, "abs", {std::numeric_limits<int>::min()}, std::numeric_limits<int>::min()},
        {0xFFEC, "abs", {false}, 1}, // whichever bool
        {0xFFEC, "abs", {true}, 1},
        {0xFFEB, "cos", {2 * kQuarterTurn}, -1.0},
        {0xFFEA, "cosd", {60}, 0.5},
        {0xFFE9, "sin", {kQuarterTurn}, 1.0},
        {0xFFE8, "sind", {30}, 0.5},
        {0xFFE7, "tan", {kQuarterTurn / 2}, 1.0},
        {0xFFE6, "tand", {-45}, -1.0},
        {0xFFE5, "acos", {-1}, 2 * kQuarterTurn},
        {0xFFE4, "acosd", {90}, kNaN}, // degrees to radians before the function, not behind it
        {0xFFE4, "acosd", {0}, kQuarterTurn},
        {0xFFE3, "asin", {1}, kQuarterTurn},
        {0xFFE2, "asind", {180 / (2 * kQuarterTurn)}, kQuarterTurn},
        {0xFFE1, "atan", {1}, kQuarterTurn / 2},
        {0xFFE0, "atand", {180 / (2 * kQuarterTurn)}, kQuarterTurn / 2},
        {0xFFDF, "atan2", {1, -1}, 1.5 * kQuarterTurn},
        {0xFFDE, "atan2d", {1, -1}, 1.5 * kQuarterTurn}, // radians, too
        {0xFFDD, "hypot", {-3, 4}, 5.0},
        {0xFFDC, "deg_to_rad", {90}, kQuarterTurn},
        {0xFFDB, "rad_to_deg", {kQuarterTurn}, 90.0},
    };
    std::vector<bool> seen(37);
    for (const Case& c : cases) {
        std::vector<Value> arguments = c.arguments;
        ASSERT_EQ(Builtin::arity(c.number), arguments.size()) << c.name;
        const Value result = Builtin::get_function(c.number)(arguments.data());
        EXPECT_TRUE(near(result, c.expected)) << c.name << " gives " << toText(result);
        EXPECT_STREQ(Builtin::name(c.number), c.name);
        const unsigned short byName = Builtin::LUT_address().at(c.name);
        EXPECT_EQ(byName, c.number == 0xFFF9 ? 0xFFEC : c.number) << "the name abs is its second entry";
        seen[0xFFFFU - c.number] = true;
    }
    EXPECT_EQ(seen, std::vector<bool>(Builtin::natives().size(), true));
}

TEST(Builtin, VectorFunctionsRefuseNumbers) {
    for (const char* name : {"angle", "cross", "dot", "mag", "rot", "unit"}) {
        const unsigned short number = Builtin::LUT_address().at(name);
        for (unsigned wrong = 0; wrong < std::min(Builtin::arity(number), 2U); ++wrong) {
            std::vector<Value> arguments(3, ValueVector{1, 0, 0});
            arguments[wrong] = 1.0;
            try {
                Builtin::get_function(number)(arguments.data());
                ADD_FAILURE() << name << " takes a number as argument " << wrong;
            } catch (const std::bad_variant_access& error) {
                EXPECT_STREQ(error.what(), "Unexpected index");
            }
        }
    }
    EXPECT_THROW(Builtin::get_function(0xFFDA), std::runtime_error);
    EXPECT_THROW(Builtin::get_function(0), std::runtime_error);
}

} // namespace
} // namespace zent
