#include "zent/nodes/ikSplineSolver.h"
#include "zent/nodes/motionPath.h"
#include "zent/nodes/nearestPointOnCurve.h"

#include <benchmark/benchmark.h>

using namespace zent;

namespace {

/// A cubic wave of 100 spans along x, 103 control points a unit apart.
Curve wave() {
    std::vector<vec3> cv;
    for (int i = 0; i < 103; ++i) {
        const auto x = static_cast<float>(i);
        cv.emplace_back(x, 3.0f * std::sin(0.4f * x), 2.0f * std::cos(0.3f * x));
    }
    std::vector<float> knots(3, 0.0f);
    for (int i = 1; i < 100; ++i) {
        knots.push_back(static_cast<float>(i));
    }
    knots.insert(knots.end(), 3, 100.0f);
    return Curve(3, kFormOpen, std::move(cv), std::move(knots), mat4(1.0f));
}

// A chain of joints as long as the curve.
void splineChain(benchmark::State& state) {
    const Curve curve = wave();
    const auto count = static_cast<std::size_t>(state.range(0));
    const vec3 bone(curve.arcLength(0.0f, 100.0f) / static_cast<float>(count), 0.0f, 0.0f);
    const std::vector<vec3> zeros(count, vec3(0.0f)), ones(count, vec3(1.0f)), bones(count, bone);
    const std::vector<int> orders(count, 0);
    const std::vector<bool> flags(count, true);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ikSplineSolver(curve, true, true, 0, 0, 6, vec3(0.0f, 1.0f, 0.0f),
                                                vec3(0.0f, 0.0f, 1.0f), mat4(1.0f), mat4(1.0f), 0, bone, 1.0f,
                                                mat4(1.0f), zeros, bones, orders, ones, ones, flags));
    }
}

void closestPoint(benchmark::State& state) {
    const Curve curve = wave();
    float x = 0.0f;
    for (auto _ : state) {
        x = x < 100.0f ? x + 0.37f : 0.0f;
        benchmark::DoNotOptimize(getClosetPointOnCurve(curve, {x, 1.0f, 5.0f}));
    }
}

// What the two above are measured against: the scan of a search, one evaluation for each knot.
void evaluateKnots(benchmark::State& state) {
    const Curve curve = wave();
    for (auto _ : state) {
        vec3 sum(0.0f);
        for (const float u : curve.knots) {
            sum += curve.localPoint(u);
        }
        benchmark::DoNotOptimize(sum);
    }
}

void motionPathByLength(benchmark::State& state) {
    const Curve curve = wave();
    for (auto _ : state) {
        benchmark::DoNotOptimize(motionPath(curve, 0.7f, true));
    }
}

} // namespace

BENCHMARK(splineChain)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(closestPoint)->Unit(benchmark::kMicrosecond);
BENCHMARK(evaluateKnots)->Unit(benchmark::kMicrosecond);
BENCHMARK(motionPathByLength)->Unit(benchmark::kMicrosecond);
