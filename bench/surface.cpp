#include "zent/nodes/closestPointOnSurface.h"

#include <benchmark/benchmark.h>

#include <random>

// The closest-point search on a surface, beside the one evaluation that it repeats, in the same run.
namespace {

using namespace zent;

/// A bicubic surface of 20 by 20 control points, waves on a plane.
Surface waves() {
    std::vector<float> knots;
    for (int i = -2; i < 20; ++i) {
        knots.push_back(static_cast<float>(std::min(std::max(i, 0), 17)));
    }
    std::vector<vec3> points;
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < 20; ++j) {
            const vec2 at(static_cast<float>(i), static_cast<float>(j));
            points.emplace_back(at.x, at.y, std::sin(at.x) * std::cos(0.7f * at.y));
        }
    }
    return Surface(3, 3, kFormOpen, kFormOpen, knots, knots, points, mat4(1.0f));
}

/// 256 points within 1 of the surface.
std::vector<vec3> queries() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> along(1.0f, 18.0f);
    std::uniform_real_distribution<float> off(-1.0f, 1.0f);
    std::vector<vec3> points;
    for (int i = 0; i < 256; ++i) {
        const float x = along(random);
        const float y = along(random);
        points.emplace_back(x, y, off(random));
    }
    return points;
}

void localPoint(benchmark::State& state) {
    const Surface surface = waves();
    const std::vector<vec3> points = queries();
    std::size_t i = 0;
    for (auto _ : state) {
        const vec3& point = points[++i % points.size()];
        benchmark::DoNotOptimize(surface.localPoint(point.x, point.y));
    }
}
BENCHMARK(localPoint);

void samples(benchmark::State& state) {
    const Surface surface = waves();
    for (auto _ : state) {
        benchmark::DoNotOptimize(compute_cls_helper(surface));
    }
}
BENCHMARK(samples)->Unit(benchmark::kMicrosecond);

void closestPoint(benchmark::State& state) {
    const Surface surface = waves();
    const SurfaceSamples grid = compute_cls_helper(surface);
    const std::vector<vec3> points = queries();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(getClosetPointOnSurface(surface, points[++i % points.size()], grid));
    }
}
BENCHMARK(closestPoint);

/// The same search from one good sample: what is left without the scan of the grid.
void closestPointWithoutScan(benchmark::State& state) {
    const Surface surface = waves();
    const std::vector<vec3> points = queries();
    std::size_t i = 0;
    for (auto _ : state) {
        const vec3& point = points[++i % points.size()];
        benchmark::DoNotOptimize(getClosetPointOnSurface(surface, point, {{vec2(point.x, point.y), point}}));
    }
}
BENCHMARK(closestPointWithoutScan);

} // namespace
