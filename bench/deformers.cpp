// Whole-shape deformers on 100,000 points, and the check's walk over as many, each beside its yardstick:
//   skinWholeMesh      at most 1.3 times skinPalette
//   blendWholeMesh     of whole shapes at most 1.5 times blendScaledAdds; delta lists, a third longer, stand beside it
//   ffdWholeMesh       its yardstick stands in bench_peers
//   pointLoopRecord    at most a third of pointLoopInitializerLists

#include "SkinRig.h"

#include "zent/check/Run.h"
#include "zent/nodes/blendShape.h"
#include "zent/nodes/ffd.h"
#include "zent/proxies/PointWalk.h"
#include "zent/proxies/Registry.h"
#include "zent/values/Compare.h"
#include "zent/values/Port.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace {

using namespace zent;
using namespace zent::bench;

constexpr unsigned kTargets = 10;

// ---- skin ----------------------------------------------------------------------------------------------------------

const SkinRig& rig() {
    static const SkinRig instance;
    return instance;
}

void skinPalette(benchmark::State& state) {
    struct PackedPoint {
        std::uint16_t influence[kInfluencesPerPoint];
        float weight[kInfluencesPerPoint];
    };
    std::vector<PackedPoint> packed(kPoints);
    for (std::size_t k = 0; k < rig().weights.size(); ++k) {
        const auto& [point, influence, weight] = rig().weights[k];
        packed[point].influence[k % kInfluencesPerPoint] = static_cast<std::uint16_t>(influence);
        packed[point].weight[k % kInfluencesPerPoint] = weight;
    }
    for (auto _ : state) {
        std::vector<mat4> palette(kInfluences);
        for (unsigned i = 0; i < kInfluences; ++i) {
            palette[i] = rig().matrix[i] * rig().bindPreMatrix[i];
        }
        Mesh result(kPoints);
        for (unsigned i = 0; i < kPoints; ++i) {
            const PackedPoint& point = packed[i];
            const vec3 p = rig().mesh.points[i];
            vec4 sum(0.0f);
            for (unsigned k = 0; k < kInfluencesPerPoint; ++k) {
                const mat4& m = palette[point.influence[k]];
                sum += point.weight[k] * (m[0] * p.x + m[1] * p.y + m[2] * p.z + m[3]);
            }
            result.points[i] = vec3(sum);
        }
        benchmark::DoNotOptimize(result.points.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(skinPalette)->Unit(benchmark::kMicrosecond);

void skinWholeMesh(benchmark::State& state) {
    SkinWeights weights = rig().weights;
    const auto order = state.range(0);
    if (order == 1) { // influence by influence
        std::stable_sort(weights.begin(), weights.end(),
                         [](const auto& a, const auto& b) { return std::get<1>(a) < std::get<1>(b); });
    }
    for (auto _ : state) {
        const Mesh result = skinMesh(1.0f, rig().mesh, mat4(1.0f), rig().matrix, rig().bindPreMatrix, weights);
        benchmark::DoNotOptimize(result.points.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(skinWholeMesh)->Unit(benchmark::kMicrosecond)->ArgName("byInfluence")->Arg(0)->Arg(1);

// ---- blend shape ---------------------------------------------------------------------------------------------------

struct Targets {
    Mesh base = cloud();
    std::vector<Mesh> shapes;
    std::vector<DeltaList> deltas;
    WeightMap weights;

    Targets() {
        for (unsigned t = 0; t < kTargets; ++t) {
            shapes.push_back(cloud(static_cast<float>(t + 1)));
            DeltaList list;
            for (unsigned i = 0; i < kPoints; ++i) {
                list.emplace_back(i, shapes[t].points[i] - base.points[i]);
            }
            deltas.push_back(std::move(list));
            weights[t] = 0.1f + 0.05f * static_cast<float>(t);
        }
    }
};

const Targets& targets() {
    static const Targets instance;
    return instance;
}

void blendScaledAdds(benchmark::State& state) {
    targets();
    for (auto _ : state) {
        Mesh result = targets().base;
        for (unsigned t = 0; t < kTargets; ++t) {
            const float a = targets().weights.at(t);
            const float* x = &targets().shapes[t].points[0].x;
            float* y = &result.points[0].x;
            for (unsigned i = 0; i < 3 * kPoints; ++i) {
                y[i] += a * x[i];
            }
        }
        benchmark::DoNotOptimize(result.points.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(blendScaledAdds)->Unit(benchmark::kMicrosecond);

void blendWholeMesh(benchmark::State& state) {
    TargetShapes<Mesh> shapes;
    TargetDeltas deltas;
    for (unsigned t = 0; t < kTargets; ++t) {
        if (state.range(0) == 0) {
            shapes.emplace(ItemIndex{t, 6000u}, targets().shapes[t]);
        } else {
            deltas.emplace(ItemIndex{t, 6000u}, targets().deltas[t]);
        }
    }
    for (auto _ : state) {
        const Mesh result = blendShapeMesh(1.0f, targets().base, targets().weights, shapes, deltas, {});
        benchmark::DoNotOptimize(result.points.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(blendWholeMesh)->Unit(benchmark::kMicrosecond)->ArgName("deltas")->Arg(0)->Arg(1);

// ---- free-form deformer --------------------------------------------------------------------------------------------

Lattice cube(unsigned n) {
    Lattice lattice;
    lattice.s = lattice.t = lattice.u = n;
    for (unsigned i = 0; i < n * n * n; ++i) {
        lattice.points.push_back(vec3(i % n, i / n % n, i / (n * n)) / static_cast<float>(n - 1) - 0.5f +
                                 0.01f * static_cast<float>(i % 5));
    }
    return lattice;
}

void ffdWholeMesh(benchmark::State& state) {
    const Lattice lattice = cube(static_cast<unsigned>(state.range(0)));
    const Mesh rest = cloud();
    Mesh mesh = rest;
    for (auto _ : state) {
        mesh.points = rest.points;
        ffdMesh(mesh, lattice, mat4(1.0f), mat4(1.0f), false, 2, 2, 2);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ffdWholeMesh)->Unit(benchmark::kMicrosecond)->ArgName("divisions")->Arg(2)->Arg(4)->Arg(7);

// ---- the check's walk ----------------------------------------------------------------------------------------------

json byInitializerList(vec3 point, bool named) {
    const json value = {point.x, point.y, point.z};
    return named ? json{{{"name", "outputGeometry[0]"}, {"value", value}, {"type", "Vertex"}}}
                 : json{{{"value", value}, {"type", "Vertex"}}};
}

bool equalByValue(json a, json b, std::string type, float epsilon) {
    return type == "Vertex" && check(vec3(a[0].get<float>(), a[1].get<float>(), a[2].get<float>()),
                                     vec3(b[0].get<float>(), b[1].get<float>(), b[2].get<float>()), epsilon);
}

bool equalByValue(json a, json b, float epsilon) {
    const std::string type = a["type"];
    return a["type"] == b["type"] && equalByValue(a["value"], b["value"], type, epsilon);
}

bool compareByValue(json a, json b, float epsilon) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!equalByValue(a[i], b[i], epsilon)) {
            return false;
        }
    }
    return a.size() == b.size();
}

void pointLoopInitializerLists(benchmark::State& state) {
    const std::vector<vec3>& points = rig().mesh.points;
    for (auto _ : state) {
        bool equal = true;
        for (const vec3& point : points) {
            const json maya = byInitializerList(point, true);
            const json zent = byInitializerList(point, false);
            equal = equal && compareByValue(maya, zent, 0.001f);
        }
        benchmark::DoNotOptimize(equal);
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(pointLoopInitializerLists)->Unit(benchmark::kMillisecond);

const json& record() {
    static const json made = skinRecord(rig());
    return made;
}

/// The whole record, cutting it into points included.
void pointLoopRecord(benchmark::State& state) {
    Registry registry;
    registry["skinMesh"] = makeProxy("skinMesh");
    RunSettings settings;
    settings.ignoreDeformer = false;
    const Run run(registry, settings, {});
    for (auto _ : state) {
        if (run.checkSingle(record()) != Run::kMatch) {
            state.SkipWithError("the record does not match");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(pointLoopRecord)->Unit(benchmark::kMillisecond);

/// The walk alone.
void pointLoopWalk(benchmark::State& state) {
    std::vector<Port> ports(1);
    ports[0].add(Element(json(record()["results"][0]["value"])));
    Arguments args;
    for (const json& argument : record()["arguments"]) {
        args.add(argument["attribute"].get<unsigned int>(), Element(json(argument["value"])));
    }
    const std::unique_ptr<Proxy> proxy = makeProxy("skinMesh");
    for (auto _ : state) {
        state.PauseTiming();
        proxy->init(args, ports);
        state.ResumeTiming();
        const std::unique_ptr<PointWalk> walk = walkOf(*proxy);
        for (unsigned i = 0; i < walk->count(); ++i) {
            benchmark::DoNotOptimize(walk->at(i).agree(0.001f));
        }
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
}
BENCHMARK(pointLoopWalk)->Unit(benchmark::kMillisecond);

} // namespace
