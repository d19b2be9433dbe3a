#include "zent/geometry/Mesh.h"
#include "zent/rig/Graph.h"
#include "zent/rig/Rig.h"
#include "zent/rig/Schedule.h"
#include "zent/values/ResourceWriter.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using nlohmann::json;
using zent::vec3;
using zent::rig::Rig;
using zent::rig::Schedule;
using zent::rig::ScheduledNode;

struct ThreadFiles {
    json manifest = json::array();
    json nodes = json::object();
    zent::ResourceWriter resource;

    Rig load() const {
        const std::string folder = testing::TempDir();
        std::ofstream(folder + "manifest.json") << manifest;
        std::ofstream(folder + "scene.json") << json{{"nodes", nodes}};
        resource.write(folder + "resource.bin");
        return Rig::load(folder + "manifest.json", folder + "resource.bin", folder + "scene.json");
    }
    void add(const std::string& node, const char* method, const std::string& result,
             const std::vector<std::pair<unsigned, json>>& arguments) {
        json made{{"node_name", node}, {"method", method}, {"results", {{{"attribute", 0}, {"name", result}}}}};
        for (const auto& [attribute, value] : arguments) {
            made["arguments"].push_back({{"attribute", attribute}, {value.is_string() ? "name" : "value", value}});
        }
        manifest.push_back(std::move(made));
    }
};

/// Sums and products that read whichever of the earlier ones, or a control; and a skin that hangs on no one of them.
Rig randomRig(unsigned seed, int count) {
    std::mt19937 random(seed);
    ThreadFiles files;
    files.nodes["control"] = {{"x", 0.5}, {"y", 2}};
    const auto earlier = [&](int i) {
        const auto from = static_cast<int>(random() % static_cast<unsigned>(i + 2));
        return from == i ? "control.x" : from > i ? "control.y" : "n" + std::to_string(from) + ".o";
    };
    for (int i = 0; i < count; ++i) {
        const std::string node = "n" + std::to_string(i);
        files.nodes[node] = {{"o", 0}};
        const char* const method = random() % 2 == 0 ? "addDoubleLinear" : "multDoubleLinear";
        files.add(node, method, node + ".o", {{0, earlier(i)}, {1, random() % 3 == 0 ? json(earlier(i)) : json(0.9f)}});
    }
    std::vector<vec3> points;
    zent::SkinWeights weights;
    for (unsigned i = 0; i < 6001; ++i) {
        points.emplace_back(static_cast<float>(i), 1.0f, 0.3f * static_cast<float>(i % 7));
        weights.emplace_back(i, i % 2, 0.7f);
        weights.emplace_back(i, (i + 1) % 2, 0.3f);
    }
    const json mesh{{"mesh", {{"id", files.resource.add(zent::Mesh(std::move(points), zent::mat4(1.0f)))}}}};
    const json unit = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    files.nodes["control"]["m"] = {{"matrix", unit}};
    files.nodes["body"] = {{"bound", mesh}, {"skinned", mesh}};
    files.add("body", "skinMesh", "body.skinned",
              {{0, 1},
               {1, "body.bound"},
               {2, unit},
               {3, "control.m"},
               {3, unit},
               {4, unit},
               {4, unit},
               {5, {{"id", files.resource.add(weights)}}}});
    return files.load();
}

Rig exampleRig() {
    const std::string folder = ZENT_EXAMPLES "/arm/";
    return Rig::load(folder + "manifest.json", folder + "resource.bin", folder + "scene.json");
}

/// All outputs, after each of some changes.
std::vector<float> played(Rig rig, unsigned threads, const std::vector<std::string>& inputs) {
    rig.setThreads(threads);
    EXPECT_EQ(rig.threads(), threads);
    std::vector<float> all;
    for (int frame = 0; frame < 4; ++frame) {
        for (const std::string& name : inputs) {
            const zent::rig::PlugId input = rig.input(name);
            std::vector<float> numbers(input.count);
            for (std::size_t i = 0; i < numbers.size(); ++i) {
                numbers[i] = 0.3f + 0.1f * static_cast<float>(frame) + 0.05f * static_cast<float>(i);
            }
            rig.setNumbers(input, numbers.data(), numbers.size());
        }
        all.push_back(static_cast<float>(rig.evaluate()));
        for (const zent::rig::PlugInfo& info : rig.outputs()) {
            const zent::rig::PlugId id = rig.output(info.name);
            if (info.type != zent::rig::Type::numbers) {
                const std::vector<vec3>& points = rig.points(id);
                all.insert(all.end(), &points[0].x, &points[0].x + 3 * points.size());
            } else if (info.size > 0) {
                const float* const numbers = rig.numbers(id);
                all.insert(all.end(), numbers, numbers + info.size);
            }
        }
    }
    return all;
}

TEST(Threads, ResultsAreTheSerialOnesBitForBit) {
    const auto compare = [](const auto& make, const std::vector<std::string>& inputs) {
        const std::vector<float> serial = played(make(), 1, inputs);
        for (const unsigned threads : {2U, 3U, 8U}) {
            const std::vector<float> parallel = played(make(), threads, inputs);
            ASSERT_EQ(parallel.size(), serial.size());
            EXPECT_EQ(std::memcmp(parallel.data(), serial.data(), serial.size() * sizeof(float)), 0) << threads;
        }
    };
    compare(exampleRig, {"arm.translate", "handControl.rotate"});
    for (const unsigned seed : {1U, 2U}) {
        compare([seed] { return randomRig(seed, 2000); }, {"control.x", "control.y", "control.m"});
    }
    Rig all = exampleRig();
    all.setThreads(0);
    EXPECT_GE(all.threads(), 1u);
}

TEST(Threads, StepsKeepTheOrderAndShareOutBranches) {
    std::mt19937 random(7);
    for (int graph = 0; graph < 20; ++graph) {
        std::vector<ScheduledNode> nodes(200);
        for (std::uint32_t i = 0; i < nodes.size(); ++i) {
            nodes[i].cost = 1e-6 * static_cast<double>(random() % 100);
            nodes[i].canSplit = random() % 20 == 0;
            for (unsigned k = random() % 3; k > 0 && i >= 4; --k) { // of the branch that every fourth one is of
                nodes[i].sources.push_back(random() % 30 == 0 ? random() % i : i - 4);
            }
        }
        const Schedule schedule(nodes, 3);
        std::vector<int> place(nodes.size(), -1); // of a step and a part
        std::size_t done = 0;
        double longest = 0.0;
        for (std::size_t step = 0; step < schedule.steps().size(); ++step) {
            const Schedule::Step& now = schedule.steps()[step];
            ASSERT_LE(now.parts.size(), 3u);
            double most = 0.0;
            for (std::size_t part = 0; part < now.parts.size(); ++part) {
                double cost = 0.0;
                for (const std::uint32_t i : now.parts[part]) {
                    for (const std::uint32_t source : nodes[i].sources) {
                        ASSERT_GE(place[source], 0) << i << " comes before its source " << source;
                        ASSERT_TRUE(place[source] / 3 < static_cast<int>(step) ||
                                    place[source] % 3 == static_cast<int>(part))
                            << i << " stands beside its source " << source;
                    }
                    ASSERT_EQ(place[i], -1);
                    place[i] = static_cast<int>(3 * step + part);
                    cost += nodes[i].cost;
                    ++done;
                }
                most = std::max(most, now.isSplit ? cost / 3 : cost);
            }
            longest += most;
        }
        EXPECT_EQ(done, nodes.size());
        double sum = 0.0;
        for (const ScheduledNode& node : nodes) {
            sum += node.cost;
        }
        EXPECT_LT(longest, 0.7 * sum); // four branches on three threads: a half at best
    }
}

} // namespace
