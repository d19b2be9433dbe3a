#include "zent/rig/Schedule.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace zent::rig {

/// Generations of nodes as parts.
struct Schedule::Plan {
    std::vector<std::vector<std::uint32_t>> parts;
    double cost = 0.0; ///< of the part that takes longest
};

Schedule::Schedule(std::vector<ScheduledNode> nodes, unsigned int threads)
    : nodes_(std::move(nodes)), threads_(threads), generationOf_(nodes_.size()) {
    for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
        std::size_t generation = 0;
        for (const std::uint32_t source : nodes_[i].sources) {
            generation = std::max(generation, generationOf_[source] + 1);
        }
        generationOf_[i] = generation;
        generations_.resize(std::max(generations_.size(), generation + 1));
        generations_[generation].push_back(i);
    }
    // Nodes that are split use all threads by themselves: what lies between two of them is cut into steps.
    const auto isSplit = [this](std::uint32_t i) { return nodes_[i].canSplit && nodes_[i].cost > kLeastCost; };
    std::size_t from = 0;
    for (std::size_t g = 0; g < generations_.size(); ++g) {
        std::vector<std::uint32_t>& generation = generations_[g];
        const auto first = std::stable_partition(generation.begin(), generation.end(), std::not_fn(isSplit));
        const std::vector<std::uint32_t> split(first, generation.end());
        generation.erase(first, generation.end());
        if (!split.empty()) {
            takeGenerations(from, g + 1);
            from = g + 1;
            for (const std::uint32_t i : split) {
                steps_.push_back({{{i}}, true});
            }
        }
    }
    takeGenerations(from, generations_.size());
}

/// The branches of some generations, which are those that no edge within them joins, shared out to the threads.
Schedule::Plan Schedule::planOf(std::size_t from, std::size_t to) const {
    std::vector<std::uint32_t> all;
    for (std::size_t g = from; g < to; ++g) {
        all.insert(all.end(), generations_[g].begin(), generations_[g].end());
    }
    std::sort(all.begin(), all.end());
    std::unordered_map<std::uint32_t, std::uint32_t> roots;
    const auto rootOf = [&roots](std::uint32_t i) {
        while (roots.at(i) != i) {
            i = roots[i] = roots.at(roots.at(i));
        }
        return i;
    };
    for (const std::uint32_t i : all) {
        roots[i] = i;
        for (const std::uint32_t source : nodes_[i].sources) {
            if (roots.count(source) > 0) {
                roots[rootOf(source)] = rootOf(i);
            }
        }
    }
    std::unordered_map<std::uint32_t, double> costs;
    for (const std::uint32_t i : all) {
        costs[rootOf(i)] += nodes_[i].cost;
    }
    std::vector<std::uint32_t> branches;
    for (const std::uint32_t i : all) {
        if (rootOf(i) == i) {
            branches.push_back(i);
        }
    }
    std::stable_sort(branches.begin(), branches.end(),
                     [&costs](std::uint32_t a, std::uint32_t b) { return costs.at(a) > costs.at(b); });
    std::vector<double> loads(threads_, 0.0);
    std::unordered_map<std::uint32_t, std::size_t> partOf;
    for (const std::uint32_t branch : branches) {
        const auto least = std::min_element(loads.begin(), loads.end());
        *least += costs.at(branch);
        partOf[branch] = static_cast<std::size_t>(least - loads.begin());
    }
    Plan plan;
    plan.parts.resize(threads_);
    for (const std::uint32_t i : all) {
        plan.parts[partOf.at(rootOf(i))].push_back(i);
    }
    const auto isEmpty = [](const std::vector<std::uint32_t>& part) { return part.empty(); };
    plan.parts.erase(std::remove_if(plan.parts.begin(), plan.parts.end(), isEmpty), plan.parts.end());
    plan.cost = *std::max_element(loads.begin(), loads.end()) + (plan.parts.size() > 1 ? kStepCost : 0.0);
    return plan;
}

/// Cuts generations into the steps that take the least time together.
void Schedule::takeGenerations(std::size_t from, std::size_t to) {
    constexpr std::size_t kMost = 64; // generations of one step
    const std::size_t count = to - from;
    std::vector<double> best(count + 1, std::numeric_limits<double>::max());
    std::vector<std::size_t> cut(count + 1, 0);
    best[0] = 0.0;
    for (std::size_t end = 1; end <= count; ++end) {
        for (std::size_t begin = end > kMost ? end - kMost : 0; begin < end; ++begin) {
            const double cost = best[begin] + planOf(from + begin, from + end).cost;
            if (cost < best[end]) {
                best[end] = cost;
                cut[end] = begin;
            }
        }
    }
    std::vector<std::size_t> ends;
    for (std::size_t end = count; end > 0; end = cut[end]) {
        ends.push_back(end);
    }
    for (auto end = ends.rbegin(); end != ends.rend(); ++end) {
        Plan plan = planOf(from + cut[*end], from + *end);
        if (!plan.parts.empty()) {
            steps_.push_back({std::move(plan.parts), false});
        }
    }
}

} // namespace zent::rig
