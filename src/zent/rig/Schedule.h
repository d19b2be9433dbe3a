#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace zent::rig {

/// Threads that do the parts of a step side by side.
class Workers {
public:
    Workers() = default;
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    virtual ~Workers() = default;

    /// How many parts are done at a time.
    virtual unsigned int count() const = 0;
    /// Does all that calls `run` in one go, so that the threads need not be called together for each step.
    virtual void enter(const std::function<void()>& all) = 0;
    /// Calls `part` with 0 to `parts` - 1, in any order, and returns when all have returned.
    virtual void run(std::size_t parts, const std::function<void(std::size_t)>& part) = 0;
};

struct ScheduledNode {
    double cost = 0.0; ///< in seconds
    bool canSplit = false;
    std::vector<std::uint32_t> sources; ///< earlier nodes
};

/// The order in which a graph is evaluated by several threads: steps one after the other, each of parts that read
/// nothing of one another. A part is a branch of some generations, since a single node is over before another thread
/// has heard of it.
class Schedule {
public:
    static constexpr double kLeastCost = 200e-6;       ///< of what is worth more than one thread
    static constexpr double kStepCost = 25e-6;         ///< of calling threads together
    static constexpr unsigned int kLeastPoints = 1024; ///< of a deformer's part

    struct Step {
        std::vector<std::vector<std::uint32_t>> parts; ///< nodes in their order
        bool isSplit = false;                          ///< one node, whose points are the parts
    };

    Schedule(std::vector<ScheduledNode> nodes, unsigned int threads);

    const std::vector<Step>& steps() const { return steps_; }
    double costOf(std::uint32_t node) const { return nodes_[node].cost; }

private:
    struct Plan;

    Plan planOf(std::size_t from, std::size_t to) const;
    void takeGenerations(std::size_t from, std::size_t to);

    std::vector<ScheduledNode> nodes_;
    unsigned int threads_;
    std::vector<std::vector<std::uint32_t>> generations_; ///< a node is one further than its furthest source
    std::vector<std::size_t> generationOf_;
    std::vector<Step> steps_;
};

} // namespace zent::rig
