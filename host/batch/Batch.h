#pragma once

#include "batch/readChecks.h"
#include "batch/ResultsFolder.h"
#include "batch/Workers.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace batch {

/// What became of one check.
struct CheckEnd {
    enum class State { waiting, match, mismatch, failed };

    State state = State::waiting; ///< until it has run
    std::string text;             ///< what to tell of it; empty where it matches
    std::uint64_t records = 0;
};

/// Where a batch is.
struct BatchProgress {
    std::size_t checks = 0;
    std::size_t done = 0;
    std::size_t mismatched = 0;
    std::size_t failed = 0;
    double secondsLeft = -1.0; ///< below 0: not known yet
};

/// Runs checks in worker processes, those with the largest files first.
class Batch {
public:
    /// Runs a check, and writes its results into a file; the error that ended it, empty for none.
    using RunCheck = std::function<std::string(const Check& check, const std::string& results)>;
    /// Reads a check's summary, the object of its results' last line.
    using Judge = std::function<CheckEnd(const nlohmann::json& summary)>;
    using Show = std::function<void(const BatchProgress&)>;

    Batch(std::vector<Check> checks, const std::string& folder, Judge judge);

    /// Leaves out what has whole results by now.
    void resume();
    /// Until all have run, or an interrupt: then what runs is waited for, at a second one no more.
    void run(unsigned int jobs, const Limits& limits, const RunCheck& runCheck, const Show& show);

    const std::vector<Check>& checks() const { return checks_; }
    const std::vector<CheckEnd>& ends() const { return ends_; }
    const ResultsFolder& folder() const { return folder_; }
    BatchProgress progress() const;
    /// The signal that has interrupted it, 0 for none.
    int interrupt() const { return interrupt_; }
    /// Why no more checks were started: the results cannot be written. Empty for none.
    const std::string& problem() const { return problem_; }
    double cpuSeconds() const { return cpuSeconds_; }
    /// The greatest memory that a check needed, and its name.
    std::size_t peakKilobytes() const { return peakKilobytes_; }
    const std::string& peakName() const { return peakName_; }

private:
    using Clock = std::chrono::steady_clock;

    bool start(Workers& workers, const RunCheck& runCheck);
    void finish(const WorkerEnd& end);
    void keep(std::size_t job, const std::string& error);
    void setEnd(std::size_t job, CheckEnd&& end);

    std::vector<Check> checks_;
    std::vector<CheckEnd> ends_;
    std::vector<double> sizes_;     ///< of their files
    std::vector<std::size_t> left_; ///< to start, the last first
    std::vector<bool> wasKilled_;
    ResultsFolder folder_;
    Judge judge_;
    Clock::time_point start_;
    double sizeToRun_ = 0.0;
    double sizeDone_ = 0.0;
    BatchProgress progress_;
    int interrupt_ = 0;
    std::string problem_;
    double cpuSeconds_ = 0.0;
    std::size_t peakKilobytes_ = 0;
    std::string peakName_;
};

} // namespace batch
