#pragma once

#include "zentcheck/Message.h"

#include <sys/types.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// Where a worker sends its messages.
class Outlet {
public:
    explicit Outlet(int file) : file_(file) {}

    void put(const Message& message);
    /// All by now. The process ends where nobody takes them any more.
    void flush();

private:
    int file_;
    std::string waiting_;
};

/// Processes that are copies of this one and share out stretches of work: each takes the next one that is left, and
/// what they have to say comes in the order of the stretches. A worker that is far ahead waits; nothing is stored
/// meanwhile.
class StretchWorkers {
public:
    /// Does a stretch in a worker. It must not throw.
    using Work = std::function<void(std::size_t stretch, Outlet& outlet)>;
    /// What a worker does before its first stretch.
    using Prepare = std::function<void(Outlet& outlet)>;

    /// Throws std::runtime_error where there can be no more processes.
    StretchWorkers(unsigned int workers, std::size_t stretches, const Prepare& prepare, const Work& work);
    StretchWorkers(const StretchWorkers&) = delete;
    StretchWorkers& operator=(const StretchWorkers&) = delete;
    /// Ends what still works.
    ~StretchWorkers();

    /// The next message; nothing behind the last stretch. Throws std::runtime_error where a worker has ended before its
    /// work was done.
    std::optional<Message> next();

private:
    struct Worker {
        pid_t process = 0;
        int pipe = -1; ///< -1 where it has told all
        std::string bytes;
        std::size_t at = 0;
        std::optional<std::size_t> stretch; ///< that it is at
    };

    void start(Worker& worker, const Prepare& prepare, const Work& work);
    /// All that a worker does. What it throws ends it: the copy must not go on in its owner's place.
    [[noreturn]] void work(int pipe, const Prepare& prepare, const Work& work) noexcept;
    std::optional<Message> read(Worker& worker);
    void findOwner();
    void end(Worker& worker);

    std::size_t stretches_;
    std::size_t present_ = 0; ///< the stretch whose messages come
    std::vector<Worker> workers_;
    Worker* owner_ = nullptr;                    ///< of that stretch
    std::atomic<std::uint64_t>* left_ = nullptr; ///< the next stretch to take, in memory that all share
};

} // namespace host
