#pragma once

#include "zent/check/Run.h"
#include "zent/values/Log.h"
#include "zent/values/Port.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zent::test {

/// A run over adapters of a test's own, with all that it shows kept.
class RunTest : public testing::Test {
protected:
    void SetUp() override {
        Log::close();
        Log::setCustomPrintln([this](const std::string& line) { lines.push_back(line); });
    }
    void TearDown() override { Log::close(); }

    void add(std::unique_ptr<Proxy> proxy) {
        std::string name = proxy->name();
        registry[name] = std::move(proxy);
    }
    bool check(const std::string& manifest) {
        return zent::Run(registry, settings, display()).check(json::parse(manifest));
    }

    Display display() {
        return {nullptr, [this](const std::string& line) { warnings.push_back(line); }, nullptr};
    }

    Registry registry;
    RunSettings settings;
    std::vector<std::string> lines;
    std::vector<std::string> warnings;
};

} // namespace zent::test
