#include "zent/nodes/animCurve.h"

#include <benchmark/benchmark.h>

using namespace zent;

namespace {

// A wave of weighted Bezier segments, one key each second frame.
struct Keys {
    svec<float, 8> times, values, inX, inY, outX, outY;
    svec<int, 8> inType, outType;

    explicit Keys(int count) {
        for (int i = 0; i < count; ++i) {
            times.push_back(static_cast<float>(2 * i));
            values.push_back(i % 2 == 0 ? 1.0f : 4.0f);
            inX.push_back(1.5f);
            inY.push_back(0.5f);
            outX.push_back(2.5f);
            outY.push_back(-0.5f);
            inType.push_back(1);
            outType.push_back(1);
        }
    }
};

void evaluate(benchmark::State& state) {
    const Keys keys(static_cast<int>(state.range(0)));
    float time = 0.0f;
    while (state.KeepRunning()) {
        time = time < keys.times.back() - 1.0f ? time + 0.37f : 0.37f;
        benchmark::DoNotOptimize(animCurve(time, keys.times, keys.values, keys.inX, keys.inY, keys.inType, keys.outX,
                                           keys.outY, keys.outType, 0, 0, true));
    }
}

// What the evaluation is measured against: the copies of the key lists that a call takes by value.
void copyKeys(benchmark::State& state) {
    const Keys keys(static_cast<int>(state.range(0)));
    while (state.KeepRunning()) {
        Keys copy(keys);
        benchmark::DoNotOptimize(copy.times.data());
    }
}

// A relative cycle, by periods away from the curve.
void cycle(benchmark::State& state) {
    const Keys keys(10);
    const float time = keys.times.back() * static_cast<float>(state.range(0)) + 1.3f;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(animCurve(time, keys.times, keys.values, keys.inX, keys.inY, keys.inType, keys.outX,
                                           keys.outY, keys.outType, 4, 4, true));
    }
}

} // namespace

BENCHMARK(evaluate)->Arg(10)->Arg(1000);
BENCHMARK(copyKeys)->Arg(10)->Arg(1000);
BENCHMARK(cycle)->Arg(1)->Arg(100)->Arg(1000000)->Arg(1000000000);
