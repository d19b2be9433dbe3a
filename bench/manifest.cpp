// A manifest of 100,000 plain records: the whole run beside the time that the JSON library takes to parse the same
// bytes, as a ratio.
#include "zent/check/readManifest.h"
#include "zent/check/Run.h"
#include "zent/proxies/Registry.h"
#include "zent/values/Log.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <limits>
#include <sstream>
#include <string>
#include <utility>

namespace {

constexpr int kRecords = 100000;

const std::string& manifestText() {
    static const std::string text = [] {
        std::string records = "[";
        for (int i = 0; i < kRecords; ++i) {
            records +=
                fmt::format(R"({}{{"node_name": "node{}", "method": "addDoubleLinear", )"
                            R"("results": [{{"attribute": 0, "value": {}}}], )"
                            R"("arguments": [{{"attribute": 0, "value": {}}}, {{"attribute": 1, "value": 0.25}}]}})",
                            i == 0 ? "" : ",\n", i, i + 0.75, i + 0.5);
        }
        return records + "]";
    }();
    return text;
}

void parseText() {
    benchmark::DoNotOptimize(zent::json::parse(manifestText()));
}

void parseOnly(benchmark::State& state) {
    for (auto _ : state) {
        parseText();
    }
}

template <class Work>
double seconds(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A run, and the library's parse in turn with it; `ofParse` is the ratio of the least times.
void readAndRun(benchmark::State& state) {
    zent::Registry registry;
    for (auto& proxy : zent::makeProxies()) {
        std::string name = proxy->name();
        registry[std::move(name)] = std::move(proxy);
    }
    double least = std::numeric_limits<double>::infinity();
    double leastParse = least;
    for (auto _ : state) {
        leastParse = std::min(leastParse, seconds([] { parseText(); }));
        const double time = seconds([&registry, &state] {
            std::istringstream file(manifestText());
            zent::Manifest manifest(file);
            zent::Run run(registry, {}, {});
            manifest.forEach([&run](zent::json&& record) { return run.next(std::move(record)); });
            if (!run.end() || manifest.size() != kRecords) {
                state.SkipWithError("a record did not match");
            }
        });
        state.SetIterationTime(time);
        least = std::min(least, time);
    }
    state.counters["ofParse"] = least / leastParse;
}

BENCHMARK(parseOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(readAndRun)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
