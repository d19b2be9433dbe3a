#include "zentcheck/StretchWorkers.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

namespace host {

namespace {

constexpr std::size_t kFlushBytes = std::size_t{1} << 16;
constexpr int kPipeBytes = 1 << 20; // how far ahead a worker may be

struct Head {
    Said kind;
    std::uint64_t size;
};
constexpr std::size_t kHeadBytes = sizeof(std::uint64_t) + 1;

[[noreturn]] void failBySystem(const char* what) {
    throw std::runtime_error(fmt::format("cannot {}: {}", what, std::strerror(errno)));
}

Head headOf(const char* bytes) {
    Head head{static_cast<Said>(*bytes), 0};
    std::memcpy(&head.size, bytes + 1, sizeof(head.size));
    return head;
}

} // namespace

void Outlet::put(const Message& message) {
    const std::uint64_t size = message.bytes().size();
    waiting_.push_back(static_cast<char>(message.kind()));
    waiting_.append(reinterpret_cast<const char*>(&size), sizeof(size));
    waiting_ += message.bytes();
    if (waiting_.size() > kFlushBytes) {
        flush();
    }
}

void Outlet::flush() {
    for (std::size_t at = 0; at < waiting_.size();) {
        const ssize_t written = write(file_, waiting_.data() + at, waiting_.size() - at);
        if (written < 0 && errno != EINTR) {
            _exit(1);
        }
        at += written < 0 ? 0 : static_cast<std::size_t>(written);
    }
    waiting_.clear();
}

StretchWorkers::StretchWorkers(unsigned int workers, std::size_t stretches, const Prepare& prepare, const Work& work)
    : stretches_(stretches), workers_(std::min<std::size_t>(workers, stretches)) {
    void* page = mmap(nullptr, sizeof(*left_), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED) {
        failBySystem("share memory with worker processes");
    }
    left_ = new (page) std::atomic<std::uint64_t>(0);
    for (Worker& worker : workers_) {
        try {
            start(worker, prepare, work);
        } catch (const std::runtime_error&) {
            if (&worker == workers_.data()) {
                munmap(left_, sizeof(*left_));
                throw;
            }
            workers_.resize(static_cast<std::size_t>(&worker - workers_.data())); // those that run do all
            break;
        }
    }
}

StretchWorkers::~StretchWorkers() {
    for (const Worker& worker : workers_) {
        if (worker.process != 0) {
            kill(worker.process, SIGKILL);
            close(worker.pipe);
            while (waitpid(worker.process, nullptr, 0) < 0 && errno == EINTR) {
            }
        }
    }
    munmap(left_, sizeof(*left_));
}

void StretchWorkers::start(Worker& worker, const Prepare& prepare, const Work& work) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        failBySystem("start a worker process");
    }
    fcntl(ends[1], F_SETPIPE_SZ, kPipeBytes); // where that may not be, it is smaller
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) { // it has ended before that
            _exit(1);
        }
        close(ends[0]);
        for (const Worker& other : workers_) {
            if (other.process != 0) {
                close(other.pipe);
            }
        }
        this->work(ends[1], prepare, work);
    }
    close(ends[1]);
    if (process < 0) {
        const int problem = errno;
        close(ends[0]);
        errno = problem;
        failBySystem("start a worker process");
    }
    worker.process = process;
    worker.pipe = ends[0];
}

void StretchWorkers::work(int pipe, const Prepare& prepare, const Work& work) noexcept {
    Outlet outlet(pipe);
    prepare(outlet);
    for (std::uint64_t stretch = 0; (stretch = left_->fetch_add(1)) < stretches_;) {
        outlet.put(Message(Said::beginStretch).add(stretch));
        outlet.flush(); // whose turn it is does not wait for the rest
        work(stretch, outlet);
        outlet.flush();
    }
    _exit(0); // what is in memory needs no orderly end
}

std::optional<Message> StretchWorkers::next() {
    while (present_ < stretches_) {
        if (owner_ == nullptr) {
            findOwner();
        }
        std::optional<Message> message = read(*owner_);
        if (!message) { // it has ended in its midst, or before it began
            throw std::runtime_error("a worker process has ended too early");
        }
        if (message->kind() == Said::endStretch || message->kind() == Said::failure) {
            owner_->stretch.reset();
            owner_ = nullptr;
            ++present_;
        }
        return message;
    }
    return std::nullopt;
}

/// Waits until a worker has begun the present stretch.
void StretchWorkers::findOwner() {
    for (;;) {
        std::vector<pollfd> waiting;
        for (Worker& worker : workers_) {
            if (worker.stretch == present_) {
                owner_ = &worker;
                return;
            }
            if (worker.pipe >= 0 && !worker.stretch) {
                waiting.push_back({worker.pipe, POLLIN, 0});
            }
        }
        if (waiting.empty()) {
            throw std::runtime_error("no worker process does the rest");
        }
        bool isRead = false;
        for (Worker& worker : workers_) { // what has come with the end of the stretch before
            isRead = isRead || (worker.pipe >= 0 && !worker.stretch && worker.at < worker.bytes.size());
        }
        if (!isRead && poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR) {
            failBySystem("wait for worker processes");
        }
        for (Worker& worker : workers_) {
            bool isReady = worker.at < worker.bytes.size();
            for (const pollfd& one : waiting) {
                isReady = isReady || (one.fd == worker.pipe && one.revents != 0);
            }
            if (worker.pipe >= 0 && !worker.stretch && isReady) {
                if (std::optional<Message> message = read(worker)) {
                    worker.stretch = message->take<std::uint64_t>();
                }
            }
        }
    }
}

/// A worker's next message; nothing behind its last one. Throws where it did not come to its end.
std::optional<Message> StretchWorkers::read(Worker& worker) {
    for (;;) {
        const std::size_t there = worker.bytes.size() - worker.at;
        if (there >= kHeadBytes) {
            const Head head = headOf(worker.bytes.data() + worker.at);
            if (there - kHeadBytes >= head.size) {
                Message message(head.kind, worker.bytes.substr(worker.at + kHeadBytes, head.size));
                worker.at += kHeadBytes + head.size;
                return message;
            }
        }
        worker.bytes.erase(0, std::exchange(worker.at, 0));
        std::array<char, kFlushBytes> chunk{};
        const ssize_t count = ::read(worker.pipe, chunk.data(), chunk.size());
        if (count == 0) {
            end(worker);
            return std::nullopt;
        }
        if (count < 0 && errno != EINTR) {
            failBySystem("hear from a worker process");
        }
        worker.bytes.append(chunk.data(), count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

void StretchWorkers::end(Worker& worker) {
    close(std::exchange(worker.pipe, -1));
    int status = 0;
    while (waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
    }
    worker.process = 0;
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        throw std::runtime_error(
            fmt::format("a worker process was ended by signal {} ({})", signal, strsignal(signal)));
    }
    if (WEXITSTATUS(status) != 0) {
        throw std::runtime_error(fmt::format("a worker process ended with status {}", WEXITSTATUS(status)));
    }
}

} // namespace host
