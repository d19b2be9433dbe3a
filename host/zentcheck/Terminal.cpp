#include "zentcheck/Terminal.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace host {

namespace {

constexpr auto kQuietStart = std::chrono::seconds(2);
constexpr auto kInterval = std::chrono::seconds(1);

constexpr std::string_view kStart = "====== start running ";
constexpr std::string_view kEnd = "====== end running ";
constexpr std::string_view kTail = " =====";
constexpr std::size_t kMaxRecord = 48; // of its name: the progress has one line

bool beginsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

void write(std::FILE* file, const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), file);
}

} // namespace

Terminal::Terminal() : isTerminal_(isatty(STDERR_FILENO) != 0) {
    if (isTerminal_) {
        progress_ = std::thread([this] { showProgress(); });
    }
}

Terminal::~Terminal() {
    stopProgress();
}

void Terminal::info(const std::string& line) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (takeMark(line) && hidesMarks_) {
        return;
    }
    clearProgress();
    write(stdout, line);
    std::fputc('\n', stdout);
}

bool Terminal::takeMark(const std::string& line) {
    if (beginsWith(line, kStart)) {
        ++records_;
        record_ = line.substr(kStart.size(), std::min(kMaxRecord, line.size() - kStart.size() - kTail.size()));
        return true;
    }
    return beginsWith(line, kEnd);
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

void Terminal::summary(const std::string& text) {
    stopProgress();
    if (isTerminal_) {
        std::fflush(stdout);
        write(stderr, fmt::format("zentcheck: {} ({:.2f} s)\n", text, seconds()));
    }
}

bool Terminal::flush() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void Terminal::showProgress() {
    std::unique_lock<std::mutex> lock(mutex_);
    end_.wait_for(lock, kQuietStart, [this] { return isOver_; });
    while (!isOver_) {
        const std::string place = records_ == 0 ? "" : fmt::format(", record {}: {}", records_, record_);
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
