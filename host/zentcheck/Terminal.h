#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace host {

/// What the program prints: a report's lines on standard output, messages on standard error and, if that is a terminal,
/// the progress of a long run and a summary at its end.
class Terminal {
public:
    /// A quiet one shows neither progress nor summary.
    explicit Terminal(bool isQuiet);
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal();

    bool isTerminal() const { return isTerminal_; }
    void info(const std::string& line);
    void warning(const std::string& text);
    void error(const std::string& text);
    /// Where the run is: the number of its record, and the record.
    void progress(int record, int records, const std::string& name);
    /// The same, in words.
    void progress(const std::string& place);
    /// What a terminal shows at the end, with the time.
    void setSummary(const std::string& text);
    /// What is shown at the end: a line, also in a pipe, and above it a table on a terminal.
    void setSummary(const std::string& line, const std::vector<std::string>& table);
    /// Ends the progress and shows the summary.
    void end();
    /// False where standard output could not take all lines.
    bool flush();

private:
    void showProgress();
    void clearProgress();
    void stopProgress();
    double seconds() const;

    const bool isTerminal_;
    const bool isQuiet_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    std::condition_variable end_;
    bool isOver_ = false;
    bool isShown_ = false;
    std::string summary_;
    bool isAlwaysShown_ = false; ///< the summary
    int recordNumber_ = 0;
    int records_ = 0;
    std::string record_; ///< the one that the run is at
    std::string place_;  ///< the same in words
    std::thread progress_;
};

} // namespace host
