#include "batch/Batch.h"

#include "batch/failedResults.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace batch {

namespace {

constexpr auto kShowInterval = std::chrono::milliseconds(500);
constexpr double kCheckItself = 1e5; // of a check, as bytes: what it costs with no file to read
constexpr const char* kCannotWrite = "cannot write results file";

double sizeOf(const Check& check) {
    double size = kCheckItself;
    for (const std::string& file : {check.manifest, check.resource, check.scene}) {
        std::error_code error;
        const std::uintmax_t bytes = file.empty() ? 0 : std::filesystem::file_size(file, error);
        size += error ? 0.0 : static_cast<double>(bytes);
    }
    return size;
}

} // namespace

Batch::Batch(std::vector<Check> checks, const std::string& folder, Judge judge)
    : checks_(std::move(checks)), ends_(checks_.size()), left_(checks_.size()), wasKilled_(checks_.size()),
      folder_(folder), judge_(std::move(judge)) {
    std::transform(checks_.begin(), checks_.end(), std::back_inserter(sizes_), sizeOf);
    std::iota(left_.rbegin(), left_.rend(), std::size_t{0});
    std::stable_sort(left_.begin(), left_.end(),
                     [this](std::size_t a, std::size_t b) { return sizes_[a] < sizes_[b]; });
}

void Batch::resume() {
    const auto isWhole = [this](std::size_t job) {
        const nlohmann::json summary = ResultsFolder::summaryOf(folder_.file(checks_[job].name));
        if (summary.is_null()) {
            return false;
        }
        setEnd(job, judge_(summary));
        return true;
    };
    left_.erase(std::remove_if(left_.begin(), left_.end(), isWhole), left_.end());
}

void Batch::run(unsigned int jobs, const Limits& limits, const RunCheck& runCheck, const Show& show) {
    start_ = Clock::now();
    for (const std::size_t job : left_) {
        sizeToRun_ += sizes_[job];
    }
    Workers workers(jobs, limits);
    while (!workers.areIdle() || (!left_.empty() && interrupt_ == 0 && problem_.empty())) {
        while (workers.hasRoom() && !left_.empty() && interrupt_ == 0 && problem_.empty()) {
            if (!start(workers, runCheck)) {
                break;
            }
        }
        if (const std::optional<WorkerEnd> end = workers.wait(kShowInterval)) {
            finish(*end);
        }
        interrupt_ = workers.lastInterrupt();
        if (workers.interrupts() > 1) {
            workers.kill();
            break;
        }
        show(progress());
    }
    while (!workers.areIdle()) { // they were killed, and leave nothing
        if (const std::optional<WorkerEnd> end = workers.wait(kShowInterval)) {
            folder_.drop(checks_[end->job].name);
        }
    }
}

/// False where there can be no more processes than there are.
bool Batch::start(Workers& workers, const RunCheck& runCheck) {
    const Check& check = checks_[left_.back()];
    try {
        workers.start(left_.back(), [&] { return runCheck(check, folder_.temporaryFile(check.name)); });
    } catch (const std::runtime_error&) {
        if (workers.areIdle()) {
            throw;
        }
        return false;
    }
    left_.pop_back();
    return true;
}

void Batch::finish(const WorkerEnd& end) {
    cpuSeconds_ += end.cpuSeconds;
    if (end.peakKilobytes > peakKilobytes_) {
        peakKilobytes_ = end.peakKilobytes;
        peakName_ = checks_[end.job].name;
    }
    if (end.wasKilled && !wasKilled_[end.job]) { // that may have been meant for this process, too, which then ends
        wasKilled_[end.job] = true;
        left_.push_back(end.job);
        return;
    }
    sizeDone_ += sizes_[end.job];
    try {
        keep(end.job, end.error);
    } catch (const std::exception& error) {
        problem_ = error.what();
        folder_.drop(checks_[end.job].name);
    }
}

/// Its results, whole. Throws where they cannot be written.
void Batch::keep(std::size_t job, const std::string& error) {
    const Check& check = checks_[job];
    const std::string file = folder_.temporaryFile(check.name);
    if (error.rfind(kCannotWrite, 0) == 0) {
        throw std::runtime_error(error);
    }
    nlohmann::json summary = ResultsFolder::summaryOf(file);
    const bool isWhole = !summary.is_null();
    if (!isWhole) {
        completeFailed(file, check, error.empty() ? "it ended without results" : error);
        summary = ResultsFolder::summaryOf(file);
    }
    folder_.keep(check.name);
    CheckEnd end = judge_(summary);
    if (!isWhole) {
        end.text = error;
    }
    setEnd(job, std::move(end));
}

void Batch::setEnd(std::size_t job, CheckEnd&& end) {
    ++progress_.done;
    progress_.mismatched += end.state == CheckEnd::State::mismatch ? 1 : 0;
    progress_.failed += end.state == CheckEnd::State::failed ? 1 : 0;
    ends_[job] = std::move(end);
}

BatchProgress Batch::progress() const {
    BatchProgress progress = progress_;
    progress.checks = checks_.size();
    if (sizeDone_ > 0.0) {
        const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
        progress.secondsLeft = seconds / sizeDone_ * (sizeToRun_ - sizeDone_);
    }
    return progress;
}

} // namespace batch
