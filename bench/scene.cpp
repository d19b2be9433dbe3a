// Opening a scene, against the JSON library's parse of the same text, and finding the plug of a record's entry in
// scenes of 1,000 to 100,000 nodes, where it should take the same time.
#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "zent/values/Select.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// A file that goes with the benchmark that wrote it.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& text)
        : path_((std::filesystem::temp_directory_path() / fmt::format("bench_scene.{}.json", getpid())).string()) {
        std::ofstream(path_) << text;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::filesystem::remove(path_); }

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

std::string nodePath(long i) {
    return fmt::format("|ns:rig|ns:limb{}|ns:joint{}", i / 10, i % 10); // ten short names for all
}

/// Nodes of ten plugs each, with a connection into every second one.
std::string sceneText(long nodes) {
    std::string text = R"({"nodes": {)";
    for (long i = 0; i < nodes; ++i) {
        text += fmt::format(R"({}"{}": {{"translate": [{}, 2.5, -0.125], "rotate": [{{"angle": {}}}, {{"angle": 30}}, )"
                            R"({{"angle": 0.5}}], "visibility": true, "weight": {}}})",
                            i == 0 ? "" : ",\n", nodePath(i), static_cast<double>(i) * 0.1, i % 360,
                            static_cast<double>(i) / 7.0);
    }
    text += R"(}, "connections": [)";
    for (long i = 1; i < nodes; i += 2) {
        text += fmt::format(R"({}["{}.weight", "{}.translate.translateX"])", i == 1 ? "" : ",\n", nodePath(i - 1),
                            nodePath(i));
    }
    return text + "]}";
}

void ParseJson(benchmark::State& state) {
    const std::string text = sceneText(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(nlohmann::json::parse(text));
    }
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
}

void OpenScene(benchmark::State& state) {
    const TemporaryFile file(sceneText(state.range(0)));
    scene::Scene& scene = scene::Scene::current();
    for (auto _ : state) {
        scene::readSceneFile(file.path(), "", scene);
        state.counters["plugs"] = static_cast<double>(scene.plugCount());
        scene.clear();
    }
}

template <class NameOf>
void readPlugs(benchmark::State& state, NameOf&& nameOf) {
    const TemporaryFile file(sceneText(state.range(0)));
    scene::readSceneFile(file.path(), "", scene::Scene::current());
    std::vector<std::string> names;
    for (long i = 0; i < 64; ++i) {
        names.push_back(nameOf(i * (state.range(0) / 64)));
    }
    zent::float_value(zent::selectPlug(names.front())); // whoever comes first builds the index
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(zent::float_value(zent::selectPlug(names[next++ % names.size()])));
    }
    scene::Scene::current().clear();
}

void ReadByFullPath(benchmark::State& state) {
    readPlugs(state, [](long i) { return nodePath(i) + ".translate.translateX"; });
}

void ReadByPartialPath(benchmark::State& state) {
    readPlugs(state, [](long i) { return fmt::format("ns:limb{}|ns:joint{}.rotateY", i / 10, i % 10); });
}

BENCHMARK(ParseJson)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenScene)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadByFullPath)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(ReadByPartialPath)->Arg(1000)->Arg(10000)->Arg(100000);

} // namespace
