#include "batch/Workers.h"

#include <fmt/format.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>

namespace batch {

namespace {

constexpr std::size_t kPageBytes = 4096;
enum Status { kDone = 0, kFailed = 1, kOutOfMemory = 2 };

[[noreturn]] void fail(const char* what) {
    throw std::runtime_error(std::string("cannot ") + what + ": " + std::strerror(errno));
}

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

void limitMemory(std::size_t megabytes) {
    if (megabytes == 0) {
        return;
    }
    const rlimit limit{megabytes << 20U, megabytes << 20U};
    setrlimit(RLIMIT_DATA, &limit); // all that is no file's
    std::set_new_handler([] { _exit(kOutOfMemory); });
}

} // namespace

Workers::Workers(unsigned int most, const Limits& limits) : slots_(most), limits_(limits) {
    for (Slot& slot : slots_) {
        void* page = mmap(nullptr, kPageBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (page == MAP_FAILED) {
            fail("share memory with workers");
        }
        slot.page = static_cast<char*>(page);
    }
    sigemptyset(&watched_);
    for (const int signal : {SIGCHLD, SIGINT, SIGTERM}) {
        sigaddset(&watched_, signal);
    }
    sigprocmask(SIG_BLOCK, &watched_, &before_);
}

Workers::~Workers() {
    kill();
    while (running_ != 0 && wait(std::chrono::seconds(1))) {
    }
    for (const Slot& slot : slots_) {
        munmap(slot.page, kPageBytes);
    }
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

void Workers::start(std::size_t job, const Work& work) {
    Slot& slot = *std::find_if(slots_.begin(), slots_.end(), [](const Slot& one) { return one.process == 0; });
    slot.job = job;
    slot.start = Clock::now();
    slot.isLate = false;
    slot.page[0] = '\0';
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process < 0) {
        fail("start a worker");
    }
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) { // it has ended before that
            _exit(kFailed);
        }
        this->work(slot, work);
    }
    slot.process = process;
    ++running_;
}

void Workers::work(const Slot& slot, const Work& work) const {
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGTERM, SIG_IGN);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
    limitMemory(limits_.megabytes);
    std::string error;
    try {
        error = work();
    } catch (const std::exception& problem) {
        error = problem.what();
        error = error.empty() ? "it failed" : error;
    }
    const std::size_t size = std::min(error.size(), kPageBytes - 1);
    std::memcpy(slot.page, error.data(), size);
    slot.page[size] = '\0';
    _exit(error.empty() ? kDone : kFailed); // what is in memory needs no orderly end
}

std::optional<WorkerEnd> Workers::wait(std::chrono::milliseconds most) {
    killLate();
    if (std::optional<WorkerEnd> end = reap()) {
        return end;
    }
    Clock::time_point until = Clock::now() + most;
    for (const Slot& slot : slots_) {
        if (slot.process != 0 && limits_.seconds > 0.0 && !slot.isLate) {
            const auto allowed = std::chrono::duration_cast<Clock::duration>(
                std::chrono::duration<double>(std::min(limits_.seconds, 1e8)));
            until = std::min(until, slot.start + allowed);
        }
    }
    takeSignal(std::max(Clock::duration::zero(), until - Clock::now()));
    killLate();
    return reap();
}

/// A worker that has ended. An interrupt that came before its end counts by then.
std::optional<WorkerEnd> Workers::reap() {
    std::optional<WorkerEnd> end = reapOne();
    while (end && takeSignal(Clock::duration::zero())) {
    }
    return end;
}

/// Whether one came.
bool Workers::takeSignal(Clock::duration most) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(most);
    const timespec timeout{seconds.count(), std::chrono::nanoseconds(most - seconds).count()};
    const int signal = sigtimedwait(&watched_, nullptr, &timeout);
    if (signal == SIGINT || signal == SIGTERM) {
        ++interrupts_;
        lastInterrupt_ = signal;
    }
    return signal > 0;
}

std::optional<WorkerEnd> Workers::reapOne() {
    int status = 0;
    rusage usage{};
    pid_t process = 0;
    while ((process = wait4(-1, &status, WNOHANG, &usage)) > 0) {
        const auto slot =
            std::find_if(slots_.begin(), slots_.end(), [process](const Slot& one) { return one.process == process; });
        if (slot != slots_.end()) {
            return endOf(*slot, status, usage);
        }
    }
    return std::nullopt;
}

WorkerEnd Workers::endOf(Slot& slot, int status, const rusage& usage) {
    WorkerEnd end;
    end.job = slot.job;
    end.seconds = std::chrono::duration<double>(Clock::now() - slot.start).count();
    end.cpuSeconds = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    end.peakKilobytes = static_cast<std::size_t>(usage.ru_maxrss);
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        end.wasKilled = signal == SIGKILL && !slot.isLate;
        end.error = slot.isLate ? fmt::format("it took longer than the {:g} s that it may", limits_.seconds)
                                : fmt::format("its process was ended by signal {} ({})", signal, strsignal(signal));
    } else if (WEXITSTATUS(status) == kOutOfMemory) {
        end.error = fmt::format("it needs more memory than the {} MB that it may", limits_.megabytes);
    } else if (WEXITSTATUS(status) != kDone) {
        slot.page[kPageBytes - 1] = '\0';
        end.error = slot.page[0] == '\0' ? fmt::format("its process ended with status {}", WEXITSTATUS(status))
                                         : std::string(slot.page);
    }
    slot.process = 0;
    --running_;
    return end;
}

void Workers::killLate() {
    for (Slot& slot : slots_) {
        if (slot.process != 0 && !slot.isLate && limits_.seconds > 0.0 &&
            std::chrono::duration<double>(Clock::now() - slot.start).count() >= limits_.seconds) {
            slot.isLate = true;
            ::kill(slot.process, SIGKILL);
        }
    }
}

void Workers::kill() {
    for (const Slot& slot : slots_) {
        if (slot.process != 0) {
            ::kill(slot.process, SIGKILL);
        }
    }
}

unsigned int usableProcessors() {
    cpu_set_t set;
    CPU_ZERO(&set);
    const int count = sched_getaffinity(0, sizeof(set), &set) == 0 ? CPU_COUNT(&set) : 1;
    return static_cast<unsigned int>(std::max(count, 1));
}

} // namespace batch
