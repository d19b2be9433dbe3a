// A manifest of 100,000 plain records: the whole run beside the time that the JSON library takes to parse the same
// bytes.
#include "zent/check/Run.h"
#include "zent/proxies/Registry.h"
#include "zent/values/Log.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <string>

namespace {

const std::string& manifestText() {
    static const std::string text = [] {
        std::string records = "[";
        for (int i = 0; i < 100000; ++i) {
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

void parseOnly(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(zent::json::parse(manifestText()));
    }
}

void parseAndRun(benchmark::State& state) {
    zent::Registry registry;
    for (auto& proxy : zent::makeProxies()) {
        std::string name = proxy->name();
        registry[std::move(name)] = std::move(proxy);
    }
    zent::Run run(registry, {}, {});
    for (auto _ : state) {
        if (!run.check(zent::json::parse(manifestText()))) {
            state.SkipWithError("a record did not match");
        }
    }
}

BENCHMARK(parseOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(parseAndRun)->Unit(benchmark::kMillisecond);

} // namespace
