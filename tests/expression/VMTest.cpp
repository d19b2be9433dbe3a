#include "zent/expression/VM.h"
#include "zent/expression/Assembly.h"
#include "zent/expression/expression.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace zent {
namespace {

using Floats = svec<float, 16>;

Floats run(const std::string& source, Floats inputs = {}) {
    Program program = assemble(source);
    return expression(std::move(inputs), std::move(program.code), std::move(program.constants));
}

// What the program comes to: "3 0.5", or what it throws, as "TYPE: text".
std::string outcome(Program program, const Floats& inputs, unsigned warmUp, std::uint64_t instructions = 1U << 24) {
    try {
        std::string text;
        VM machine(std::move(program.code), std::move(program.constants), warmUp);
        for (const float number : machine.executeAtMost(instructions, inputs)) {
            text += (std::isnan(number) ? "nan" : std::to_string(number)) + " ";
        }
        return text;
    } catch (const std::out_of_range& error) {
        return std::string("range: ") + error.what();
    } catch (const std::bad_variant_access& error) {
        return std::string("variant: ") + error.what();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

// Also decoded as soon as it can be.
std::string failure(const std::string& source, const Floats& inputs = {}) {
    std::string text = outcome(assemble(source), inputs, VM::kNever);
    EXPECT_EQ(outcome(assemble(source), inputs, 1), text) << source;
    return text;
}

TEST(VM, ComputesByTheAlternativesOfItsOperands) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        const char* code; // leaves one value
        float expected;
    };
    const Case cases[] = {
        {"const 7\n const 2\n add", 9.0f},
        {"const 7\n const 2.5\n sub", 4.5f},
        {"const 2.5\n const 7\n sub", -4.5f},
        {"const 1.5\n const -3.0\n mul", -4.5f},
        {"const 7\n const 2\n div", 3.0f},
        {"const -7\n const 2\n div", -3.0f}, // truncated, not floored
        {"const 7\n const 2.0\n div", 3.5f},
        {"const 7.0\n const 2\n div", 3.5f},
        {"const 1.0\n const 0\n div", std::numeric_limits<float>::infinity()},
        {"const 7\n const -2\n mod", 1.0f},
        {"const -7\n const 2\n mod", -1.0f},
        {"const -7.5\n const 2\n mod", -1.5f},
        {"true\n const 2\n mod", 1.0f},               // the number rule: 1 mod 2
        {"const (8, 8, 8)\n const 2.0\n mod", -1.0f}, // -1 mod 2
        {"const 5\n const 0.0\n mod", nan},
        {"const 3\n neg\n const 2\n div", -1.0f}, // negated, it is an integer still
        {"const 3.0\n neg\n const 2\n div", -1.5f},
        {"const 2147483647\n const 1\n add", -2147483648.0f}, // wraps around
        {"const 65536\n const 65536\n mul", 0.0f},
        {"const -2147483648\n neg", -2147483648.0f},
        {"const 2\n const 2.0\n eq", 1.0f},
        {"const 2\n const 3\n eq", 0.0f},
        {"const nan\n const 3\n eq", 1.0f}, // neither less nor greater
        {"const nan\n const 3\n gt", 0.0f},
        {"const 3.5\n const 3\n gt", 1.0f},
        {"const 3\n const 3.5\n gt", 0.0f},
        {"const 3\n const 3.5\n lt", 1.0f},
        {"const 3\n const 3\n lt", 0.0f},
        {"true\n false\n and", 0.0f},
        {"true\n true\n and", 1.0f},
        {"true\n false\n or", 1.0f},
        {"false\n false\n or", 0.0f},
        {"false\n not", 1.0f},
        {"const (4, 5, 6)\n component 0", 4.0f},
        {"const (4, 5, 6)\n component 1", 5.0f},
        {"const (4, 5, 6)\n component 2", 6.0f},
        {"const (4, 5, 6)\n component 7", 4.0f},
        {"true\n const 2\n const 3.5\n vector\n component 0", 1.0f},
        {"true\n const 2\n const 3.5\n vector\n component 2", 3.5f},
        {"const 1\n const (9, 9, 9)\n const 3\n vector\n component 1", -1.0f},
        {"true", 1.0f},
        {"const (1, 2, 3)", -1.0f},
        {"const 1e300", std::numeric_limits<float>::infinity()},
        {"const 5\n const 6\n pop", 5.0f},
        {"const 5\n const 6\n store 0\n pop", 6.0f}, // the top stays, and the slot has it
        {"const 5\n const 6\n load 0", 5.0f},
        {"byte 29\n const 5\n byte 255", 5.0f}, // unknown opcodes take one byte
    };
    for (const Case& c : cases) {
        const Floats outputs = run(std::string(c.code) + "\n output 0\n end");
        ASSERT_EQ(outputs.size(), 1U) << c.code;
        EXPECT_TRUE(outputs[0] == c.expected || (std::isnan(outputs[0]) && std::isnan(c.expected)))
            << c.code << " gives " << outputs[0];
    }
}

TEST(VM, WritesAndReadsInputsAndOutputsBySlot) {
    EXPECT_TRUE(run("end").empty());
    EXPECT_EQ(run("input 1\n output 3\n getoutput 3\n getoutput 0\n add\n output 1\n end", {4.0f, 0.25f}),
              (Floats{0.0f, 0.25f, 0.0f, 0.25f}));
    EXPECT_EQ(run("true\n output 255\n end").size(), 256U);
}

TEST(VM, JumpsFromBehindTheOperand) {
    // The sum of 1 to 10, with a loop of locals 0 (the sum) and 1 (the counter).
    EXPECT_EQ(run("        const 0\n const 1\n"
                  "again:  load 1\n const 10\n gt\n not\n unless done\n"
                  "        load 0\n load 1\n add\n store 0\n pop\n"
                  "        load 1\n const 1\n add\n store 1\n pop\n back again\n"
                  "done:   load 0\n output 0\n end"),
              Floats{55.0f});
    EXPECT_EQ(run("jump over\n end\n over: true\n output 0\n end"), Floats{1.0f});
    EXPECT_EQ(run("jump 3\n true\n output 0\n end"), Floats{1.0f});
}

TEST(VM, CallsKeepTheirArgumentsAsSlots) {
    // 6! by recursion; the value below the arguments stays where it is.
    EXPECT_EQ(run("           const 100\n const 6\n call 1 factorial\n add\n output 0\n end\n"
                  "factorial: load 0\n const 2\n lt\n unless more\n const 1\n return\n"
                  "more:      load 0\n load 0\n const 1\n sub\n call 1 factorial\n mul\n return"),
              Floats{820.0f});
    // The first argument is slot 0; locals that a function leaves behind go with its frame.
    EXPECT_EQ(run("const 7\n const 1\n const 5\n const 3\n call 2 f\n sub\n sub\n output 0\n end\n"
                  "f: const 40\n const 41\n load 0\n load 1\n sub\n return"),
              Floats{8.0f}); // 7 - (1 - (5 - 3))
    // A built-in's result takes the place of its arguments, surplus ones included, and the frame is the caller's again.
    EXPECT_EQ(run("const 9\n const 1.0\n const 0.0\n const 8\n call 3 atan2\n pop\n load 0\n output 0\n end"),
              Floats{9.0f});
}

TEST(VM, KeepsItsValuesWhereTheStackGrows) {
    std::string source = "const 0.5\n";
    for (int i = 0; i < 300; ++i) {
        source += "load " + std::to_string(i % 256) + "\n"; // also of the slot just below the end of the room
    }
    for (int i = 0; i < 300; ++i) {
        source += "add\n";
    }
    EXPECT_EQ(run(source + "output 0\n end"), Floats{150.5f});
}

TEST(VM, ReturnsWhereAFunctionTookItsCallersValues) {
    // f takes a value from below its own frame, so there is nothing of its own left to remove.
    EXPECT_EQ(run("const 3\n const 4\n const 5\n call 0 f\n output 0\n output 1\n end\n f: pop\n return"),
              (Floats{4.0f, 3.0f}));
}

TEST(VM, StatedExceptions) {
    struct Case {
        const char* code;
        const char* text;
    };
    const Case cases[] = {
        {"true", "range: vector::_M_range_check: __n (which is 1) >= this->size() (which is 1)"},
        {"byte 0", "range: vector::_M_range_check: __n (which is 1) >= this->size() (which is 1)"},
        {"byte 25\n byte 0", "range: vector::_M_range_check: __n (which is 2) >= this->size() (which is 2)"},
        {"jump 300", "range: vector::_M_range_check: __n (which is 300) >= this->size() (which is 3)"},
        {"const 1.0\n component 0", "variant: Unexpected index"},
        {"true\n neg", "variant: Unexpected index"},
        {"const 1\n not", "variant: Unexpected index"},
        {"const 1\n true\n and", "variant: Unexpected index"},
        {"true\n const 1.0\n or", "variant: Unexpected index"},
        {"const 0\n unless 5", "variant: Unexpected index"},
        {"const 1\n call 1 mag", "variant: Unexpected index"},
        {"true\n const 1\n add", "Unreachable"},
        {"const 1\n true\n sub", "Unreachable"},
        {"const (1, 1, 1)\n const 2.0\n mul", "Unreachable"},
        {"const 2.0\n const (1, 1, 1)\n div", "Unreachable"},
        {"true\n true\n eq", "Unreachable"},
        {"const 1\n false\n gt", "Unreachable"},
        {"false\n const 1\n lt", "Unreachable"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(failure(c.code), c.text) << c.code;
    }
}

TEST(VM, UncheckedSituationsHaveTextsOfTheirOwn) {
    struct Case {
        const char* code;
        const char* text;
    };
    const Case cases[] = {
        {"const 1.0\n const [1]", "code[3] is 1, the list of constants has 1"},
        {"input 2", "code[1] is 2, the list of inputs has 2"},
        {"getoutput 0", "code[1] is 0, the list of outputs has 0"},
        {"load 0", "local slot 0 of the expression lies beyond the stack: the frame starts at 0, the stack has 0"},
        {"true\n store 1",
         "local slot 1 of the expression lies beyond the stack: the frame starts at 0, the stack has 1"},
        {"store 1", "local slot 1 of the expression lies beyond the stack: the frame starts at 0, the stack has 0"},
        {"mod", "an instruction of the expression takes 2 values from a stack of 0"},
        {"pop", "an instruction of the expression takes 1 values from a stack of 0"},
        {"output 0", "an instruction of the expression takes 1 values from a stack of 0"},
        {"const 1\n add", "an instruction of the expression takes 2 values from a stack of 1"},
        {"const 1\n mod", "an instruction of the expression takes 2 values from a stack of 1"},
        {"const 1\n call 2 6\n end", "the call before code[6] takes 2 arguments from a stack of 1"},
        {"return", "the expression returns before code[1] with no call open"},
        {"call 0 4\n return", "an instruction of the expression takes 1 values from a stack of 0"},
        {"const 3\n const 0\n div", "integer division of 3 by zero in the expression"},
        {"const 3\n const 0\n mod", "integer remainder of 3 by zero in the expression"},
        {"const -2147483648\n const -1\n div", "integer division of -2147483648 by -1 overflows in the expression"},
        {"const -2147483648\n const -1\n mod", "integer remainder of -2147483648 by -1 overflows in the expression"},
        {"back -1", "the jump back by 4 before code[3] leads out of the expression"},
        {"call 0 40000", "there is no built-in 40000, the lowest number is 65499"},
        {"const 1\n call 1 pow", "the built-in pow reads 2 arguments, the call before code[6] gives 1"},
        {"again: true\n back again", "the expression keeps more than 1048576 values on its stack"},
        {"f: call 0 f", "the expression keeps more than 262144 calls open"},
        {"again: back again", "the expression runs more than 16777216 instructions"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(failure(c.code, {0.0f, 0.0f}), c.text) << c.code;
    }
}

// Each body in a loop, so that it is decoded on the way, over values of all kinds.
TEST(VM, DecodedCodeDoesWhatItsBytesDo) {
    const std::string values[] = {"const 3", "const -7", "const 2.5", "const 0.0",        "true",   "false",
                                  "input 0", "load 0",   "load 1",    "const (1, -2, 3)", "load 7", "getoutput 0"};
    const std::string operations[] = {"add", "sub",    "mul",        "div",      "mod",        "eq",
                                      "gt",  "lt",     "and",        "or",       "pop",        "neg",
                                      "not", "vector", "call 2 max", "call 2 f", "call 1 mag", "component 1"};
    const std::string ends[] = {"store 0\n pop",     "output 0",      "store 1",          "unless next\n jump next",
                                "not\n unless next", "byte 77\n pop", "output 2\n return"};
    for (const std::string& a : values) {
        for (const std::string& b : values) {
            for (const std::string& operation : operations) {
                for (const std::string& end : ends) {
                    const std::string source =
                        "const 1\n const 0.5\n const 9\nagain: load 2\n const 0\n gt\n unless done\n" + a + "\n" + b +
                        "\n" + operation + "\n" + end +
                        "\nnext: load 2\n const 1\n sub\n store 2\n pop\n back again\n"
                        "done: load 0\n output 1\n load 1\n output 3\n end\n"
                        "f: load 1\n load 0\n sub\n return\n";
                    const std::string expected = outcome(assemble(source), {0.75f}, VM::kNever);
                    ASSERT_EQ(outcome(assemble(source), {0.75f}, 1), expected) << source;
                    ASSERT_EQ(outcome(assemble(source), {0.75f}, 3), expected) << source;
                }
            }
        }
    }
}

// Several operations at once, over locals whose kind changes from round to round.
TEST(VM, FusedArithmeticDoesWhatItsBytesDo) {
    const std::string values[] = {"const 3", "const 0", "const 2.5",        "const -0.0", "input 0",     "load 0",
                                  "load 1",  "load 2",  "const (1, -2, 3)", "true",       "getoutput 1", "load 5"};
    const std::string operations[] = {"add", "sub", "mul", "div", "add", "sub", "mul", "div", "gt", "mod"};
    const std::string ends[] = {"store 0\n pop", "store 1\n pop", "output 1\n", "store 0", "add\n store 1\n pop"};
    std::mt19937 random(11);
    const auto oneOf = [&random](const auto& list, std::size_t count) { return list[random() % count] + "\n "; };
    unsigned ended = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string body;
        for (const char token : std::string(std::array{"vvovvoo", "vvovo", "vvvoo", "vvovoovo", "vvvvooo"}[i % 5])) {
            // Mostly numbers, else nearly all would end in the first round.
            body += token == 'v' ? oneOf(values, random() % 8 == 0 ? 12 : 8) : oneOf(operations, random() % 8 ? 8 : 10);
        }
        const std::string source = "const 1\n const 0.5\n const 9\n output 1\n const 9\n"
                                   "again: load 2\n const 0\n gt\n unless done\n" +
                                   body + oneOf(ends, 5) +
                                   "load 2\n const 1\n sub\n store 2\n pop\n back again\n"
                                   "done: load 0\n output 0\n load 1\n output 2\n end\n";
        const std::string expected = outcome(assemble(source), {0.75f}, VM::kNever, 1U << 10);
        ended += expected.back() == ' ' ? 1 : 0;
        ASSERT_EQ(outcome(assemble(source), {0.75f}, 1, 1U << 10), expected) << source;
        ASSERT_EQ(outcome(assemble(source), {0.75f}, 3, 1U << 10), expected) << source;
    }
    EXPECT_GT(ended, 5000U);
}

// Random bytes: jumps into operands, code cut off, calls anywhere; stopped in the midst by the count of instructions.
TEST(VM, DecodedCodeDoesWhatRandomBytesDo) {
    std::mt19937 random(7);
    const auto below = [&](unsigned bound) { return static_cast<unsigned char>(random() % bound); };
    for (int i = 0; i < 30000; ++i) {
        Program program;
        program.constants = {1, -2, 0.5, 3.0, true, false, ValueVector{1, 2, 3}, UnknownValue{9}};
        for (int k = 0; k < 40; ++k) {
            program.code.push_back(below(8) == 0 ? 18 : below(31));
            program.code.push_back(below(4) == 0 ? below(40) : below(9));
            if (program.code[program.code.size() - 2] == 23) {
                const bool isNative = below(2) == 0;
                program.code.push_back(isNative ? 0xFF : 0);
                program.code.push_back(isNative ? static_cast<unsigned char>(0xFF - below(40)) : below(80));
            } else if (program.code[program.code.size() - 2] >= 25) {
                program.code.back() = 0;
                program.code.push_back(below(50));
            }
        }
        const std::uint64_t instructions = 1 + random() % 3000;
        ASSERT_EQ(outcome(program, {0.5f, -3.0f}, 1, instructions),
                  outcome(program, {0.5f, -3.0f}, VM::kNever, instructions))
            << disassemble(program.code, &program.constants) << instructions;
    }
}

} // namespace
} // namespace zent
