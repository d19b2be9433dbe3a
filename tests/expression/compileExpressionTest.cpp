#include "zent/expression/compileExpression.h"
#include "zent/expression/VM.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace zent {
namespace {

using Floats = svec<float, 16>;

Floats run(const std::string& text, const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
           Floats values, double framesPerSecond = 0.0) {
    CompiledExpression compiled = compileExpression(text, inputs, outputs, framesPerSecond);
    if (compiled.error) {
        ADD_FAILURE() << toText(*compiled.error) << "\n" << text;
        return {};
    }
    VM machine(std::move(compiled.program.code), std::move(compiled.program.constants));
    return machine.executeAtMost(1000000, std::move(values));
}

// With the inputs a.x = 2.5 and a.y = -4; the text leaves its result in o.x.
float result(const std::string& text) {
    const Floats outputs = run(text, {"a.x", "a.y"}, {"o.x"}, {2.5f, -4.0f});
    return outputs.size() == 1 ? outputs[0] : NAN;
}

TEST(CompileExpression, ValuesAreTheLanguages) {
    struct Case {
        const char* value;
        float expected;
    };
    const Case cases[] = {
        // Literals.
        {"0x1F + 3. + .5 + 1.5e-1", 34.65f},
        {"true + on + yes + false + off + no", 3.0f},
        // Integers stay integers, until a float comes.
        {"7 / 2", 3.0f},
        {"-7 / 2", -3.0f},
        {"7 / 2.0", 3.5f},
        {"7 / 2 * 2.0", 6.0f},
        {"7 % -2", 1.0f},
        {"-7.5 % 2", -1.5f},
        {"fmod(7, 0.0) == fmod(7, 2)", 1.0f}, // of NaN and 1: the machine's equality holds for NaN
        {"2147483647 + 1", -2147483648.0f},
        {"(true + true) / 4", 0.0f}, // conditions count as integers
        {"int(3.99) + int(-3.99)", 0.0f},
        {"(int)a.x / 2", 1.0f}, // a cast binds closer than a division
        {"int(a.x * 1000000.0)", 2500000.0f},
        {"float(7) / 2", 3.5f},
        {"int(1e10)", -2147483648.0f},
        // Precedence, and from the left.
        {"2 + 3 * 4", 14.0f},
        {"20 / 2 / 5", 2.0f},
        {"10 - 4 - 3", 3.0f},
        {"7 % 4 * 2", 6.0f},
        {"-2 * -3", 6.0f},
        {"1 < 2 == 1", 1.0f},
        {"3 > 2 > 1", 0.0f}, // 1 > 1
        {"1 + 1 < 3 && 2 != 3", 1.0f},
        {"1 || 0 && 0", 1.0f},
        {"!0 + 1", 2.0f},
        {"!(0 + 1)", 0.0f},
        {"0 ? 1 : 0 ? 2 : 3", 3.0f},
        {"a.x > 2 ? time_of_day.x : 5", NAN},
        // Comparisons.
        {"(2 <= 2) + (2 >= 3) * 10 + (2 != 2) * 100", 1.0f},
        {"a.x && a.y", 1.0f},
        {"0.25 && 0.5", 1.0f}, // not cut to integers first
        // Vectors.
        {"(<<1, 2, 3>> + <<10, 20, 30>>) * <<1, 0, 0>>", 11.0f},
        {"(<<1, 2, 3>> - <<3, 2, 1>>).z", 2.0f},
        {"<<1, 2, 3>> * <<4, 5, 6>>", 32.0f}, // the dot product
        {"(<<1, 0, 0>> ^ <<0, 1, 0>>).z", 1.0f},
        {"(2 * <<1, 2, 3>>).y + (<<1, 2, 3>> * 2).z + (<<1, 2, 3>> / 2).x", 10.5f},
        {"(<<1, 2, 3>> + 1).y", 3.0f},
        {"(-<<1, 2, 3>>).y", -2.0f},
        {"<<2, 3, 6>>", 7.0f}, // a vector as a number is its length
        {"<<2, 3, 6>> + 0 == <<2, 3, 6>>", 1.0f},
        {"<<2, 3, 6>> != <<2, 3, 7>>", 1.0f},
        {"sqrt(<<0, 3, 4>>) * sqrt(5)", 5.0f},
        {"mag(2)", 3.46410162f}, // a number as a vector has it three times
        // Functions.
        {"clamp(0, 1, a.x) + clamp(-3, 3, a.y) * 10", -29.0f}, // the bounds stand first
        {"min(7, 2) / 4 + max(7, 2)", 7.5f},
        {"abs(-7) / 2 + abs(-1.5)", 4.5f},
        {"abs(<<-1, -2, 2>>).y", 2.0f},
        {"sign(-3) / 2", -0.5f},
        {"acosd(0.5) + asind(0.5)", 90.0f}, // degrees come out
        {"atand(1) + atan2d(1, -1)", 180.0f},
        {"rad_to_deg(deg_to_rad(30)) + hypot(3, 4)", 35.0f},
        {"sind(30) + cosd(60) + tand(45)", 2.0f},
        {"ceil(1.2) + floor(-1.2) + trunc(-1.7)", -1.0f},
        {"exp(log(2)) + log10(100) + pow(2, 3)", 12.0f},
        {"dot(unit(<<0, 0, 5>>), cross(<<1, 0, 0>>, <<0, 1, 0>>))", 1.0f},
        {"rot(<<1, 0, 0>>, <<0, 0, 1>>, deg_to_rad(90)).y", 1.0f},
        {"rad_to_deg(angle(<<1, 0, 0>>, <<0, 2, 0>>))", 90.0f},
        {"linstep(10, 20, 12.5) + smoothstep(0, 4, 1) + linstep(0, 4, 3)", 1.15625f},
        {"smoothstep(1, 2, 0) + linstep(1, 2, 3)", 1.0f},
        {".I[0] + .I[1]", -1.5f},
    };
    for (const Case& c : cases) {
        if (std::isnan(c.expected)) {
            EXPECT_TRUE(compileExpression(std::string("o.x = ") + c.value, {"a.x"}, {"o.x"}).error) << c.value;
            continue;
        }
        EXPECT_FLOAT_EQ(result(std::string("o.x = ") + c.value), c.expected) << c.value;
    }
}

TEST(CompileExpression, StatementsAreTheLanguages) {
    struct Case {
        const char* text;
        float expected;
    };
    const Case cases[] = {
        {"$a = 7; $a /= 2; o.x = $a;", 3.0f}, // an integer by its first value
        {"$a = 7.0; $a /= 2; o.x = $a;", 3.5f},
        {"int $a = 2; $a *= 1.75; o.x = $a;", 3.0f},
        {"int $i = 5; o.x = $i++ * 10 + $i;", 56.0f},
        {"int $i = 5; o.x = ++$i * 10 + $i--;", 66.0f},
        {"float $a, $b = 3; o.x = $a + $b;", 3.0f},
        {"$a = $b = 4; o.x = $a / 3 + $b;", 5.0f},
        {"vector $v = <<1, 2, 3>>; $v += <<1, 1, 1>>; $v *= 2; o.x = $v.y;", 6.0f},
        {"vector $v = 1.5; $v ^= <<0, 0, 1>>; o.x = $v.x;", 1.5f},
        {"float $a = 9; $a %= 4; $a -= 3; o.x = $a;", -2.0f},
        {"o.x = 1; o.x += 2; o.x *= 4; o.x++;", 13.0f},
        {"float $a = 1; { float $a = 2; $a = 3; } o.x = $a;", 1.0f},
        {"if (a.x > 2) { o.x = 1; } else o.x = 2;", 1.0f},
        {"if (a.x < 2) o.x = 1; else if (a.y < -3) o.x = 2; else o.x = 3;", 2.0f},
        {"int $s = 0; for ($i = 1, $j = 10; $i <= 4; $i++, $j--) $s += $i * $j; o.x = $s;", 80.0f},
        {"int $s; int $i = 0; while (true) { if (++$i > 10) break; if ($i % 2) continue; $s += $i; } o.x = $s;", 30.0f},
        {"int $i = 0; do { int $k = 3; $i += $k; if ($i == 6) continue; } while ($i < 8); o.x = $i;", 9.0f},
        {"int $n; for (int $i = 0; $i < 3; $i++) for (int $j = 0; ; $j++) { if ($j > $i) break; $n++; } o.x = $n;",
         6.0f},
        // The right side is left out where the left one decides.
        {"int $n = 0; $a = (0 && ($n = 1)) + (1 || ($n = 2)); o.x = $n * 10 + $a;", 1.0f},
        {"int $n = 0; int $d = 0; o.x = ($d != 0 && 7 / $d > 1) ? 1 : 2;", 2.0f},
        {"o.x = clamp(0, $k = 5, ($k = 9) + 0.0) + $k;", 14.0f}, // evaluated from the left
        {"/* a\n comment */ o.x = 1 // another\n + 2;;", 3.0f},
        {"o.x = 5", 5.0f},
    };
    for (const Case& c : cases) {
        EXPECT_FLOAT_EQ(result(c.text), c.expected) << c.text;
    }
}

TEST(CompileExpression, RefusalsNameThePlaceTheThingAndWhatToDo) {
    struct Case {
        const char* text;
        const char* error; // the beginning
    };
    const Case cases[] = {
        {"o.x = 1;\n  setAttr o.x 2;", "line 2, column 3: setAttr: a command cannot run"},
        {"print(\"a\");", "line 1, column 7: a string: there are no strings"},
        {"print(1);", "line 1, column 1: print: no function of byte code"},
        {"o.x = noise(frame);", "line 1, column 7: noise: no function of byte code"},
        {"o.x = rand(1);", "line 1, column 7: rand: no function"},
        {"o.x = `getAttr a.x`;", "line 1, column 7: `: a command cannot run"},
        {"string $s;", "line 1, column 1: string: there are no strings"},
        {"float $a[3];", "line 1, column 9: [: there are no arrays"},
        {"$a = {1, 2};", "line 1, column 6: {: an array has no place"},
        {"global float $a;", "line 1, column 1: global: a global variable"},
        {"global proc f() {}", "line 1, column 1: global:"},
        {"switch (1) {}", "line 1, column 1: switch: there is no switch"},
        {"o.x = $b;", "line 1, column 7: $b: not declared here"},
        {"if (1) { $b = 1; } o.x = $b;", "line 1, column 26: $b: not declared here"},
        {"o.x = b.x;", "line 1, column 7: b.x: none of the expression's inputs"},
        {"b.x = 1;", "line 1, column 1: b.x: none of the expression's outputs"},
        {"o.x = tx;", "line 1, column 7: tx: no attribute: write node.attribute, or $tx"},
        {"tx = 1;", "line 1, column 1: tx: no attribute"},
        {"o.x = time;", "line 1, column 7: time: none of the expression's inputs"},
        {"o.x = .I[2];", "line 1, column 7: .I[2]: none of"},
        {"o.x += 1;", "line 1, column 1: o.x: read before it is assigned"},
        {"if (a.x) o.x = 1;", "line 1, column 10: o.x: not assigned on every path"},
        {"while (a.x > 0) { o.x = 1; break; }", "line 1, column 19: o.x: not assigned on every path"},
        {"o.x = 2 ^ 3;", "line 1, column 9: ^: the cross product of two vectors: for a power"},
        {"o.x = <<1, 2, 3>> < <<3, 2, 1>>;", "line 1, column 19: <: vectors have no order"},
        {"o.x = 1 / <<3, 2, 1>>;", "line 1, column 9: /: nothing divides by a vector"},
        {"o.x = 1 == <<3, 2, 1>>;", "line 1, column 9: ==: a vector and a number"},
        {"if (<<1, 0, 0>>) ;", "line 1, column 5: the condition: a vector is neither"},
        {"vector $v; $v.x = 1;", "line 1, column 17: =: a component cannot be assigned"},
        {"o.x = a.x.z;", "line 1, column 7: a.x.z: none of"},
        {"o.x = 3 = 4;", "line 1, column 9: =: only a variable or an attribute"},
        {"o.x = (1).y;", "line 1, column 10: .y: only a vector has components"},
        {"o.x = sin(1, 2);", "line 1, column 7: sin: takes 1 arguments, not 2"},
        {"o.x = 7 / 0;", "line 1, column 9: /: an integer is divided by zero"},
        {"o.x = 3000000000;", "line 1, column 7: 3000000000: beyond a 32-bit integer"},
        {"o.x = 1e999;", "line 1, column 7: 1e999: beyond what a float holds"},
        {"break;", "line 1, column 1: break: outside a loop"},
        {"float $a; int $a;", "line 1, column 15: $a: declared twice"},
        {"int $i; for (int $i = 0; $i < 2; $i++) ;", "line 1, column 18: $i: declared before the loop"},
        {"o.x = (1 + 2;", "line 1, column 13: ;: expected )"},
        {"o.x = 1 +", "line 1, column 10: the end: expected a value"},
        {"o.x = 1\no.x = 2;", "line 2, column 1: o.x: expected ;"},
        {"o.x = \xC3\xA9 + 1;", "line 1, column 7: \xC3\xA9: the language has no such word"},
        {"/* \xC3\xA9 */ o.x = \xFF;", "line 1, column 15: byte 255: the language"},
        {"o.x = 1; /* ", "line 1, column 10: a comment without end: the language"},
        {"o.x = 2x;", "line 1, column 7: 2x: the language"},
    };
    for (const Case& c : cases) {
        const CompiledExpression compiled = compileExpression(c.text, {"a.x", "a.y"}, {"o.x"});
        ASSERT_TRUE(compiled.error) << c.text;
        EXPECT_EQ(toText(*compiled.error).rfind(c.error, 0), 0U) << c.text << "\n" << toText(*compiled.error);
    }
}

TEST(CompileExpression, LimitsOfTheMachineAreErrors) {
    std::string constants;
    std::string variables;
    for (int i = 0; i < 300; ++i) {
        constants += "$a += " + std::to_string(i) + ".5;\n";
        variables += "$v" + std::to_string(i) + " = 1;\n";
    }
    std::string code;
    for (int i = 0; i < 9000; ++i) {
        code += "$a = $a + 1;\n";
    }
    const std::string deep(100000, '(');
    std::string sum = "o.x = 1";
    for (int i = 0; i < 100000; ++i) {
        sum += "+a.x";
    }
    for (const auto& [text, problem] :
         {std::pair<std::string, const char*>{"float $a;\n" + constants, "256 different constants"},
          {variables + "o.x = $v299;", "256 variables"},
          {"float $a;\n" + code, "too long for byte code"},
          {"o.x = " + deep, "nests too deep"},
          {sum, "nests too deep"}}) {
        const CompiledExpression compiled = compileExpression(text, {"a.x"}, {"o.x"});
        ASSERT_TRUE(compiled.error);
        EXPECT_NE(compiled.error->problem.find(problem), std::string::npos) << toText(*compiled.error);
    }
}

TEST(CompileExpression, NamesFindTheirSlots) {
    const ExpressionNames names =
        namesInExpression("|g|ns:b.w[2] = c.x + time; d.y = (c.x > 1) ? on:off; $a = frame; e.z++; .O[1] = .I[1];");
    EXPECT_EQ(names.inputs, (std::vector<std::string>{".I[0]", ".I[1]", "c.x", "time", "frame"}));
    EXPECT_EQ(names.outputs, (std::vector<std::string>{".O[0]", ".O[1]", "|g|ns:b.w[2]", "d.y", "e.z"}));
    EXPECT_EQ(run("o.y = b.x; .O[2] = .I[0];", {"a.x", "b.x"}, {"o.x", "o.y", "o.z"}, {1.0f, 2.0f}),
              (Floats{0.0f, 2.0f, 1.0f}));
    EXPECT_EQ(run("o.x = time * 2;", {"frame"}, {"o.x"}, {36.0f}, 24.0), Floats{3.0f});
    EXPECT_EQ(run("o.x = time * 2;", {"frame", "time"}, {"o.x"}, {36.0f, 5.0f}, 24.0), Floats{10.0f});
}

TEST(CompileExpression, TheListingAssemblesToTheSameProgram) {
    const std::string text = "// bend\nint $k = a.x * 2;\nfor (int $i = 0; $i < 3; $i++)\n{\n  $k += $i;\n}\n"
                             "o.x = <<$k, 0.5, -1>> * <<1, 1, -0.0>>;\n";
    const CompiledExpression compiled = compileExpression(text, {"a.x"}, {"o.x"});
    ASSERT_FALSE(compiled.error) << toText(*compiled.error);
    const std::string shown = listing(compiled.program, compiled.marks, text);
    const Program again = assemble(shown);
    EXPECT_EQ(again.code, compiled.program.code);
    ASSERT_EQ(again.constants.size(), compiled.program.constants.size());
    for (std::size_t i = 0; i < again.constants.size(); ++i) {
        EXPECT_EQ(toText(again.constants[i]), toText(compiled.program.constants[i]));
    }
    for (const char* line : {"#   1  // bend\n", "#   5    $k += $i;\n", "#   6  }\n"}) {
        EXPECT_NE(shown.find(line), std::string::npos) << shown;
    }
}

// Expressions as rigs have them, with the values worked out here by other ways.
TEST(CompileExpression, RigsExpressions) {
    const double x = 1.75;
    const double t = 2.5;
    const double pi = 3.141592653589793;
    struct Case {
        const char* text; // of in.x = 1.75, in.s = 1 and time = 2.5
        double expected;
    };
    const Case cases[] = {
        // A wheel of radius 0.5 that rolled 1.75.
        {"float $radius = 0.5; o.x = in.x / (2 * 3.141592653589793 * $radius) * 360;", x / pi * 360},
        {"o.x = -rad_to_deg(in.x / 0.35);", -x / 0.35 * 180 / pi},
        // Breathing, a pulse, a sway that dies out.
        {"o.x = 1 + 0.1 * sin(time * 2);", 1 + 0.1 * std::sin(2 * t)},
        {"float $p = time % 1; if ($p < 0.5) o.x = 1; else o.x = 0;", 0.0},
        {"o.x = exp(-time * 0.5) * cos(time * 6.0) * in.x;", std::exp(-0.5 * t) * std::cos(6 * t) * x},
        // Ramps.
        {"o.x = clamp(0, 1, (in.x - 1) / (3 - 1));", 0.375},
        {"o.x = smoothstep(1, 3, in.x) * 10;", 10 * (3 * 0.375 * 0.375 - 2 * 0.375 * 0.375 * 0.375)},
        {"float $u = linstep(0, 2, in.x); o.x = $u < 0.5 ? 2 * $u : 2 - 2 * $u;", 0.25},
        {"o.x = in.x < 0 ? 0 : pow(in.x, 2) * 0.5;", 1.53125},
        // Switches.
        {"if (in.s == 0) { o.x = in.x; } else if (in.s == 1) { o.x = in.x * 2; } else { o.x = 0; }", 3.5},
        {"o.x = (in.x > 1 && in.s) ? 1 : 0;", 1.0},
        {"int $on = in.s; o.x = in.x * $on + 5 * (1 - $on);", 1.75},
        {"o.x = !(in.x > 5 || in.x < 0);", 1.0},
        // Squash that keeps the volume.
        {"float $s = max(0.1, in.x); o.x = 1 / sqrt($s);", 1 / std::sqrt(1.75)},
        // Vectors: a distance, an angle, an aim.
        {"vector $a = <<in.x, 2, 3>>; vector $b = <<1, 2, -1>>; o.x = mag($b - $a);", std::hypot(0.75, 4.0)},
        {"o.x = rad_to_deg(angle(<<1, 0, 0>>, <<in.x, in.x, 0>>));", 45.0},
        {"vector $n = unit(<<3, 0, 4>>); vector $r = rot($n, <<0, 1, 0>>, deg_to_rad(90)); o.x = $r.x;", 0.8},
        {"o.x = atan2d(in.x, -in.x);", 135.0},
        // Loops: a sum of waves; a spring without state, stepped from rest to the present time.
        {"float $w = 0; for ($i = 1; $i <= 3; $i++) $w += sin(in.x * $i) / $i; o.x = $w;",
         std::sin(x) + std::sin(2 * x) / 2 + std::sin(3 * x) / 3},
        {"float $p = 1; float $v = 0; float $h = 0.001; int $n = trunc(time / $h + 0.5);\n"
         "for (int $i = 0; $i < $n; $i++) { $v += -4 * $p * $h; $p += $v * $h; }\no.x = $p;",
         std::cos(2 * t)}, // the equation's solution
    };
    ASSERT_EQ(std::size(cases), 20U);
    for (const Case& c : cases) {
        const Floats outputs = run(c.text, {"in.x", "in.s", "time"}, {"o.x"}, {1.75f, 1.0f, 2.5f});
        ASSERT_EQ(outputs.size(), 1U) << c.text;
        const bool isSpring = std::string(c.text).find("$h") != std::string::npos; // its steps are coarse
        EXPECT_NEAR(outputs[0], c.expected, isSpring ? 3e-3 : 1e-6 * std::max(1.0, std::abs(c.expected))) << c.text;
    }
}

} // namespace
} // namespace zent
