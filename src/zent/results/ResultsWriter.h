#pragma once

#include "zent/results/Outcome.h"
#include "zent/results/Statistics.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// Writes results files (docs/results-format.md).
namespace zent {

/// Both sides' points of a deformed shape; `layout` is all that its JSON has besides them.
struct ShapeLine {
    nlohmann::json layout;
    std::vector<float> maya;
    std::vector<float> zent;
    std::vector<std::int32_t> polygonCounts;
    std::vector<std::int32_t> polygonVertices;
};

/// What a record's line holds of a chained run.
struct ChainLine {
    Outcome outcome = Outcome::match; ///< with what the records before it made
    bool isOwn = false;               ///< it is off with Maya's values, too
    std::string error;
    const std::vector<Statistics>* statistics = nullptr;
    std::vector<std::size_t> reads; ///< the records whose outputs it reads
    nlohmann::json path;            ///< of what is off: from the record to the first cause
    std::string why;                ///< the same in words
};

/// What a record's line holds. What is null or empty is left out.
struct RecordLine {
    std::uint64_t index = 0;
    std::string_view node;
    std::string_view method;
    Outcome outcome = Outcome::match;
    bool warning = false;
    double seconds = 0.0;
    std::string_view error;
    std::string_view nearest;
    const std::vector<Statistics>* statistics = nullptr;
    int point = -1;
    const nlohmann::json* maya = nullptr;
    const nlohmann::json* zent = nullptr;
    const nlohmann::json* inputs = nullptr;
    const nlohmann::json* closure = nullptr;
    const nlohmann::json* samples = nullptr;
    const ShapeLine* shapes = nullptr;
    const ChainLine* chain = nullptr;
};

/// A results file's lines, each on disk when its call returns. A file that cannot be written to its end is given up at
/// the first line that fails; what it has by then stays.
class ResultsWriter {
public:
    ResultsWriter() = default;
    ResultsWriter(const ResultsWriter&) = delete;
    ResultsWriter& operator=(const ResultsWriter&) = delete;
    ~ResultsWriter();

    /// Throws std::runtime_error with the reason. Until then, lines go nowhere. Of a file that is there, its first
    /// `kept` bytes stay, and lines come behind them.
    void open(const std::string& path, std::uint64_t kept = 0);
    /// Lines go to a function from now on, each with its end.
    void open(std::function<void(std::string_view)> take) { take_ = std::move(take); }
    bool isOpen() const { return file_ >= 0 || take_; }
    /// Why the file was given up; empty where it was not.
    const std::string& problem() const { return problem_; }

    /// A line as it stands: the header, the summary.
    void write(std::string_view line);
    void write(const RecordLine& record);
    /// Whether all that was written is in the file.
    bool close();

private:
    void flush();

    std::string path_;
    int file_ = -1;
    std::function<void(std::string_view)> take_;
    std::string problem_;
    fmt::memory_buffer line_;
};

/// Counts what the lines of a run tell, for its last one. It grows with the number of methods, never with that of
/// records.
class ResultsSummary {
public:
    void add(const RecordLine& record, bool isUnknown);
    /// The summary's object. `stopped`: the run ended before the manifest did.
    nlohmann::json json(bool stopped, double seconds) const;

private:
    struct Worst {
        double size = -1.0; ///< as it is held against the tolerance
        double value = 0.0;
        Unit unit = Unit::value;
        std::uint64_t index = 0;
        std::string node;
        std::string output;

        void take(const RecordLine& record, const Statistics& statistics);
    };
    struct Counts {
        std::array<std::uint64_t, kOutcomeNames.size()> outcomes{};
        std::uint64_t warnings = 0;
        bool isUnknown = false;
        Worst match;
        Worst mismatch;

        const Worst& worst() const { return mismatch.size >= 0.0 ? mismatch : match; }
        void add(const RecordLine& record);
        std::uint64_t records() const;
        nlohmann::json json() const;
    };
    using Methods = std::unordered_map<std::string, Counts>;

    Methods methods_;
    Methods::value_type* last_ = nullptr; ///< of the record before: records of one method often follow each other
};

/// A value with its numbers that JSON has no word for as strings: "NaN", "Infinity", "-Infinity".
nlohmann::json withNamedNumbers(nlohmann::json value);

} // namespace zent
