#pragma once

#include "zent/check/Mismatch.h"
#include "zent/check/Run.h"
#include "zent/results/ResultsWriter.h"
#include "zent/tools/measure.h"

#include <chrono>
#include <limits>
#include <optional>
#include <unordered_map>

namespace zent {

class Chain;

/// What a report holds besides what the run's settings say.
struct ReportSettings {
    Tolerance tolerance;
    double warn = std::numeric_limits<double>::infinity(); ///< a match that is further off than this has a warning
    std::size_t mostPoints = 200000;                       ///< of a shape that is written out
};

/// Measures what a run compares, and writes a line for each record.
class ReportObserver : public RunObserver {
public:
    using Clock = std::chrono::steady_clock;

    /// `chain` is what a chained run found, null for any other.
    ReportObserver(const ReportSettings& settings, ResultsWriter& writer, const Chain* chain = nullptr)
        : settings_(settings), writer_(writer), chain_(chain) {}

    std::uint64_t records() const { return line_.index; }
    const ResultsSummary& summary() const { return summary_; }

    void beginRecord(const std::string& node, const std::string& method) override;
    bool judge(const json& maya, const json& zent, bool matches) override;
    void beginPoints(const PointWalk& walk, const std::vector<Port>& ports) override;
    bool judgePoint(const PointPair& point, bool matches) override;
    void mismatch(const Mismatch& mismatch, const Arguments& args) override;
    bool survives(const std::exception& error) override;
    bool endRecord(RecordEnd end) override;

    static constexpr std::size_t kMostSampled = 1000; ///< records; a page shows no more

protected:
    /// The next record has this index.
    void startAt(std::uint64_t index) { line_.index = index; }
    /// The last record's.
    const RecordLine& line() const { return line_; }
    /// Records whose curves were sampled.
    std::size_t sampled() const { return sampled_; }

private:
    void completeShapes();
    const std::string& nearestMethod(const std::string& method);

    const ReportSettings settings_;
    ResultsWriter& writer_;
    const Chain* chain_;
    ResultsSummary summary_;
    std::unordered_map<std::string, std::string> nearest_; ///< of the unknown methods so far
    std::size_t sampled_ = 0;

    // The present record.
    RecordLine line_; ///< its index is the number of records so far
    std::string node_;
    std::string method_;
    std::string error_;
    std::vector<Statistics> statistics_;
    std::optional<Mismatch> mismatch_;
    std::optional<ShapeLine> shapes_;
    json inputs_;
    json samples_;
    bool keepsPoints_ = false;
    const std::vector<Port>* ports_ = nullptr; ///< until the record is compared
    Clock::time_point start_;
};

} // namespace zent
