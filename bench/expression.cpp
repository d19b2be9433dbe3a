// The expression machine, in nanoseconds an instruction (the counter "instruction"), beside the same arithmetic as
// compiled C++ (in nanoseconds for as many instructions, so that the two compare).
#include "zent/expression/expression.h"
#include "zent/expression/Assembly.h"
#include "zent/expression/VM.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using zent::Program;
using Floats = zent::svec<float, 16>;

constexpr int kRounds = 1000;

// Local 0 is the accumulator, local 1 counts the rounds down; the body stands between.
Program loop(const std::string& start, const std::string& body) {
    return zent::assemble(start +
                          "\n const 1000\n"
                          "again: load 1\n const 0\n gt\n unless done\n" +
                          body +
                          "\n load 1\n const 1\n sub\n store 1\n pop\n back again\n"
                          "done: load 0\n output 0\n end\n");
}

void countInstructions(benchmark::State& state, int aRound) {
    state.counters["instruction"] =
        benchmark::Counter(static_cast<double>(aRound) * kRounds,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void runProgram(benchmark::State& state, const Program& program, int aRound) {
    const Floats inputs{0.5f, 2.0f, 0.25f, 1.0f};
    for (auto _ : state) {
        benchmark::DoNotOptimize(zent::expression(inputs, program.code, program.constants));
    }
    countInstructions(state, aRound);
}

const char* const kArithmetic = "load 0\n input 0\n mul\n load 1\n const 0.125\n mul\n add\n store 0\n pop";
constexpr int kArithmeticRound = 4 + 9 + 6;

void machineArithmetic(benchmark::State& state) {
    runProgram(state, loop("const 0.0", kArithmetic), kArithmeticRound);
}
BENCHMARK(machineArithmetic);

void compiledArithmetic(benchmark::State& state) {
    Floats inputs{0.5f};
    for (auto _ : state) {
        benchmark::DoNotOptimize(inputs.data());
        double sum = 0.0;
        for (int i = kRounds; i > 0; --i) {
            sum = sum * static_cast<double>(inputs[0]) + i * 0.125;
        }
        benchmark::DoNotOptimize(sum);
    }
    countInstructions(state, kArithmeticRound);
}
BENCHMARK(compiledArithmetic);

// a = cross(unit(vector(input, a.x, a.z)), axis)
const char* const kVectors = "input 0\n load 0\n component 0\n load 0\n component 2\n vector\n call 1 unit\n"
                             "const (0, 1, 0.5)\n call 2 cross\n store 0\n pop";
constexpr int kVectorsRound = 4 + 11 + 6;

void machineVectors(benchmark::State& state) {
    runProgram(state, loop("const (1, 2, 3)", kVectors), kVectorsRound);
}
BENCHMARK(machineVectors);

void compiledVectors(benchmark::State& state) {
    Floats inputs{0.5f};
    for (auto _ : state) {
        benchmark::DoNotOptimize(inputs.data());
        zent::ValueVector a{1, 2, 3};
        for (int i = kRounds; i > 0; --i) {
            const zent::ValueVector v{static_cast<double>(inputs[0]), a.x, a.z};
            const double scale = 1.0 / std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
            const zent::ValueVector u{scale * v.x, scale * v.y, scale * v.z};
            a = {u.y * 0.5 - u.z, -u.x * 0.5, u.x};
        }
        benchmark::DoNotOptimize(a);
    }
    countInstructions(state, kVectorsRound);
}
BENCHMARK(compiledVectors);

// A function of the program itself that calls two built-ins: 3 calls a round.
const char* const kCalls = "load 0\n load 1\n call 2 mix\n store 0\n pop";
const char* const kMix = "mix: load 0\n load 1\n call 2 max\n input 0\n mul\n call 1 floor\n return\n";
constexpr int kCallsRound = 4 + 5 + 7 + 6;

void machineCalls(benchmark::State& state) {
    Program program = zent::assemble(std::string("const 0.0\n const 1000\n"
                                                 "again: load 1\n const 0\n gt\n unless done\n") +
                                     kCalls +
                                     "\n load 1\n const 1\n sub\n store 1\n pop\n back again\n"
                                     "done: load 0\n output 0\n end\n" +
                                     kMix);
    runProgram(state, program, kCallsRound);
}
BENCHMARK(machineCalls);

[[gnu::noinline]] double mix(double a, double b, double factor) {
    return std::floor(std::max(a, b) * factor);
}

void compiledCalls(benchmark::State& state) {
    Floats inputs{0.5f};
    for (auto _ : state) {
        benchmark::DoNotOptimize(inputs.data());
        double a = 0.0;
        for (int i = kRounds; i > 0; --i) {
            a = mix(a, i, static_cast<double>(inputs[0]));
        }
        benchmark::DoNotOptimize(a);
    }
    countInstructions(state, kCallsRound);
}
BENCHMARK(compiledCalls);

// What a call of the node function costs before its first instruction: the copies of its arguments and the stack.
void machineStart(benchmark::State& state) {
    const Program program = zent::assemble("end");
    const Floats inputs{0.5f, 2.0f, 0.25f, 1.0f};
    for (auto _ : state) {
        benchmark::DoNotOptimize(zent::expression(inputs, program.code, program.constants));
    }
}
BENCHMARK(machineStart);

} // namespace
