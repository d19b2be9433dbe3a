#include "zent/rig/Graph.h"
#include "zent/rig/Rig.h"

#include <tbb/info.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

#include <algorithm>
#include <memory>

namespace zent::rig {

namespace {

/// Beside the library of rigs, so that what Maya loads needs no scheduler.
class Arena : public Workers {
public:
    explicit Arena(unsigned int threads)
        : threads_(threads), arena_(std::min(static_cast<int>(threads), tbb::info::default_concurrency())) {}

    unsigned int count() const override { return threads_; }
    void enter(const std::function<void()>& all) override { arena_.execute(all); }
    void run(std::size_t parts, const std::function<void(std::size_t)>& part) override {
        tbb::parallel_for(
            tbb::blocked_range<std::size_t>(0, parts, 1),
            [&part](const tbb::blocked_range<std::size_t>& range) {
                for (std::size_t i = range.begin(); i < range.end(); ++i) {
                    part(i);
                }
            },
            tbb::simple_partitioner());
    }

private:
    unsigned int threads_;
    tbb::task_arena arena_;
};

} // namespace

void Rig::setThreads(unsigned int threads) {
    const unsigned int count = threads == 0 ? static_cast<unsigned int>(tbb::info::default_concurrency()) : threads;
    graph_->setWorkers(count > 1 ? std::make_shared<Arena>(count) : nullptr);
}

unsigned int Rig::threads() const {
    return graph_->workers() == nullptr ? 1 : graph_->workers()->count();
}

} // namespace zent::rig
