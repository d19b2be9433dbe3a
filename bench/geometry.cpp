// Evaluation of curves and surfaces, against the same weighted sum with the basis given; and reading a resource file,
// against reading its bytes.

#include "zent/geometry/nurbs.h"
#include "zent/values/resource.h"

#include "zent/values/ResourceWriter.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

namespace {

using namespace zent;

constexpr unsigned kCount = 16;

std::vector<float> uniformKnots() {
    std::vector<float> knots;
    for (unsigned i = 0; i < kCount + 2; ++i) {
        knots.push_back(static_cast<float>(i));
    }
    return knots;
}

std::vector<vec3> wave(std::size_t count) {
    std::vector<vec3> points;
    for (std::size_t i = 0; i < count; ++i) {
        const float t = static_cast<float>(i);
        points.emplace_back(t, std::sin(t), std::cos(0.7f * t));
    }
    return points;
}

const Curve kCurve(3, kFormOpen, wave(kCount), uniformKnots(), mat4(1.0f));
const Surface kSurface(3, 3, kFormOpen, kFormOpen, uniformKnots(), uniformKnots(), wave(kCount* kCount), mat4(1.0f));

/// Calls at parameters that walk over all spans.
template <class Evaluate>
void walk(benchmark::State& state, Evaluate evaluate) {
    float u = 2.0f;
    for (auto _ : state) {
        benchmark::DoNotOptimize(evaluate(u));
        u = u > 14.0f ? 2.0f : u + 0.37f;
    }
}

void curveSumAlone(benchmark::State& state) {
    BasisRow weights{0.1f, 0.4f, 0.4f, 0.1f};
    walk(state, [&](float u) {
        benchmark::DoNotOptimize(weights);
        const vec3* cv = &kCurve.cv[static_cast<std::size_t>(u) - 2];
        return weights[0] * cv[0] + weights[1] * cv[1] + weights[2] * cv[2] + weights[3] * cv[3];
    });
}
BENCHMARK(curveSumAlone);

void curveLocalPoint(benchmark::State& state) {
    walk(state, [](float u) { return kCurve.localPoint(u); });
}
BENCHMARK(curveLocalPoint);

void curveDerivative(benchmark::State& state) {
    walk(state, [](float u) { return kCurve.dPdU(u); });
}
BENCHMARK(curveDerivative);

/// Point and both derivatives from one basis: beside the three calls above, one after the other.
void curveJet(benchmark::State& state) {
    walk(state, [](float u) { return kCurve.jet(u); });
}
BENCHMARK(curveJet);

void curveSecondDerivative(benchmark::State& state) {
    walk(state, [](float u) { return kCurve.d2PdU2(u); });
}
BENCHMARK(curveSecondDerivative);

void surfaceLocalPoint(benchmark::State& state) {
    walk(state, [](float u) { return kSurface.localPoint(u, 16.0f - u); });
}
BENCHMARK(surfaceLocalPoint);

void surfaceDerivative(benchmark::State& state) {
    walk(state, [](float u) { return kSurface.dPdU(u, 16.0f - u); });
}
BENCHMARK(surfaceDerivative);

/// A file of 64 meshes, 256 MB in all.
const std::string& resourceFile() {
    static const struct File {
        std::string path = (std::filesystem::temp_directory_path() / "zent_bench_geometry.bin").string();
        File() {
            ResourceWriter writer;
            const Mesh mesh(wave(350000), mat4(1.0f));
            for (int i = 0; i < 64; ++i) {
                writer.add(mesh);
            }
            writer.write(path);
        }
        ~File() { std::filesystem::remove(path); }
    } file;
    return file.path;
}

void resourcePlainRead(benchmark::State& state) {
    const std::string& path = resourceFile();
    for (auto _ : state) {
        std::vector<char> bytes(std::filesystem::file_size(path));
        std::ifstream(path, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        benchmark::DoNotOptimize(bytes.data());
    }
}
BENCHMARK(resourcePlainRead)->Unit(benchmark::kMillisecond);

void resourceLoad(benchmark::State& state) {
    const std::string& path = resourceFile();
    for (auto _ : state) {
        ResourceStorage storage;
        storage.load(path);
    }
}
BENCHMARK(resourceLoad)->Unit(benchmark::kMillisecond);

void resourceLoadAndParse(benchmark::State& state) {
    const std::string& path = resourceFile();
    for (auto _ : state) {
        ResourceStorage storage;
        storage.load(path);
        for (unsigned int id = 0; id < 64; ++id) {
            benchmark::DoNotOptimize(storage.get<Mesh>(id).points.data());
        }
    }
}
BENCHMARK(resourceLoadAndParse)->Unit(benchmark::kMillisecond);

} // namespace
