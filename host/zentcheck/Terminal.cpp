#include "zentcheck/Terminal.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace host {

namespace {

constexpr auto kQuietStart = std::chrono::seconds(2);
constexpr auto kInterval = std::chrono::seconds(1);

constexpr std::size_t kMaxRecord = 48; // of its name: the progress has one line

void write(std::FILE* file, const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), file);
}

} // namespace

Terminal::Terminal(bool isQuiet) : isTerminal_(isatty(STDERR_FILENO) != 0), isQuiet_(isQuiet) {
    if (isTerminal_ && !isQuiet_) {
        progress_ = std::thread([this] { showProgress(); });
    }
}

Terminal::~Terminal() {
    stopProgress();
}

void Terminal::info(const std::string& line) {
    const std::lock_guard<std::mutex> lock(mutex_);
    clearProgress();
    write(stdout, line);
    std::fputc('\n', stdout);
}

void Terminal::progress(int record, int records, const std::string& name) {
    const std::lock_guard<std::mutex> lock(mutex_);
    recordNumber_ = record;
    records_ = records;
    record_.assign(name, 0, kMaxRecord);
}

void Terminal::progress(const std::string& place) {
    const std::lock_guard<std::mutex> lock(mutex_);
    place_ = ", " + place;
}

void Terminal::warning(const std::string& text) {
    const std::lock_guard<std::mutex> lock(mutex_);
    clearProgress();
    write(stderr, "warning: " + text + "\n");
}

void Terminal::error(const std::string& text) {
    const std::lock_guard<std::mutex> lock(mutex_);
    clearProgress();
    write(stderr, "error: " + text + "\n");
}

void Terminal::setSummary(const std::string& text) {
    summary_ = "zentcheck: " + text;
    isAlwaysShown_ = false;
}

void Terminal::setSummary(const std::string& line, const std::vector<std::string>& table) {
    summary_.clear();
    if (isTerminal_) {
        for (const std::string& row : table) {
            summary_ += row + "\n";
        }
    }
    summary_ += line;
    isAlwaysShown_ = true;
}

void Terminal::end() {
    stopProgress();
    if (!isQuiet_ && (isTerminal_ || isAlwaysShown_)) {
        std::fflush(stdout);
        write(stderr, summary_ + (isTerminal_ ? fmt::format(" ({:.2f} s)\n", seconds()) : "\n"));
    }
}

bool Terminal::flush() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void Terminal::showProgress() {
    std::unique_lock<std::mutex> lock(mutex_);
    end_.wait_for(lock, kQuietStart, [this] { return isOver_; });
    while (!isOver_) {
        const std::string place =
            recordNumber_ == 0 ? place_ : fmt::format(", record {} of {}: {}", recordNumber_, records_, record_);
        write(stderr, fmt::format("\r\033[Kzentcheck: {:.0f} s{}", seconds(), place));
        isShown_ = true;
        end_.wait_for(lock, kInterval, [this] { return isOver_; });
    }
    clearProgress();
}

void Terminal::clearProgress() {
    if (isShown_) {
        write(stderr, "\r\033[K");
        isShown_ = false;
    }
}

void Terminal::stopProgress() {
    if (!progress_.joinable()) {
        return;
    }
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        isOver_ = true;
    }
    end_.notify_one();
    progress_.join();
}

double Terminal::seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

} // namespace host
