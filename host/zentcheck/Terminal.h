#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace host {

/// What the program prints: a report's lines on standard output, messages on standard error and, if that is a terminal,
/// the progress of a long run and a summary at its end. The progress tells which record the run is at, as the lines on
/// each record's start do.
class Terminal {
public:
    Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal();

    bool isTerminal() const { return isTerminal_; }
    /// The lines on each record's start and end are not printed: they only serve the progress.
    void hideMarks() { hidesMarks_ = true; }
    void info(const std::string& line);
    void warning(const std::string& text);
    void error(const std::string& text);
    /// The last line of a run; ends the progress.
    void summary(const std::string& text);
    /// False where standard output could not take all lines.
    bool flush();

private:
    void showProgress();
    bool takeMark(const std::string& line);
    void clearProgress();
    void stopProgress();
    double seconds() const;

    const bool isTerminal_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    std::condition_variable end_;
    bool isOver_ = false;
    bool isShown_ = false;
    bool hidesMarks_ = false;
    unsigned long records_ = 0;
    std::string record_; ///< the one that the run is at
    std::thread progress_;
};

} // namespace host
