#pragma once

#include <sys/resource.h>
#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace batch {

struct Limits {
    double seconds = 0.0;      ///< none where 0
    std::size_t megabytes = 0; ///< none where 0
};

/// How a worker process ended.
struct WorkerEnd {
    std::size_t job = 0;
    std::string error;       ///< why it did not do its work; empty where it did
    bool wasKilled = false;  ///< from outside
    double seconds = 0.0;    ///< of the clock
    double cpuSeconds = 0.0; ///< of a processor
    std::size_t peakKilobytes = 0;
};

/// Processes that are copies of this one, each for one job. While this lives, SIGINT and SIGTERM end nothing and are
/// counted; workers do not take notice of them, and end with this process.
class Workers {
public:
    /// What a worker does. It returns, or throws, the error that ends it; empty for none.
    using Work = std::function<std::string()>;

    Workers(unsigned int most, const Limits& limits);
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    ~Workers();

    bool areIdle() const { return running_ == 0; }
    bool hasRoom() const { return running_ < slots_.size(); }
    /// Throws std::runtime_error where there can be no more processes.
    void start(std::size_t job, const Work& work);
    /// Waits until a worker ends, an interrupt comes, or some time has passed.
    std::optional<WorkerEnd> wait(std::chrono::milliseconds most);
    /// How many signals have asked this process to end, and the last of them.
    int interrupts() const { return interrupts_; }
    int lastInterrupt() const { return lastInterrupt_; }
    void kill();

private:
    using Clock = std::chrono::steady_clock;

    /// A place for one worker; `page` is memory that it shares with this process.
    struct Slot {
        pid_t process = 0;
        std::size_t job = 0;
        Clock::time_point start;
        bool isLate = false;
        char* page = nullptr;
    };

    [[noreturn]] void work(const Slot& slot, const Work& work) const;
    bool takeSignal(Clock::duration most);
    std::optional<WorkerEnd> reap();
    std::optional<WorkerEnd> reapOne();
    WorkerEnd endOf(Slot& slot, int status, const rusage& usage);
    void killLate();

    std::vector<Slot> slots_;
    Limits limits_;
    std::size_t running_ = 0;
    int interrupts_ = 0;
    int lastInterrupt_ = 0;
    sigset_t watched_{};
    sigset_t before_{};
};

/// The processors that this process may use.
unsigned int usableProcessors();

} // namespace batch
