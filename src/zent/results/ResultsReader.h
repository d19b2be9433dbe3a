#pragma once

#include "zent/results/Outcome.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace zent {

/// A results file's first line.
struct ResultsHeader {
    std::string program;
    std::string host;
    std::string manifest;
    std::string time; ///< UTC, "2026-11-25T08:00:00Z"
    std::uint64_t records = 0;
    double tolerance = 0.0;
    nlohmann::json whole; ///< the line as it stands
};

/// The value of a record that is furthest off.
struct WorstValue {
    bool isMeasured = false;
    double value = 0.0;
    double size = 0.0; ///< the value, or the radians where it is degrees: what is held against the tolerance
    std::string unit;  ///< "value", "degrees" or "distance"
    std::string output;
    std::vector<std::uint64_t> at;
    std::uint64_t count = 0; ///< values of the record, of all outputs
    std::uint64_t over = 0;
    std::uint64_t notFinite = 0;
    std::string note;
};

/// A results file's line on one record.
struct ResultRecord {
    std::uint64_t index = 0;
    std::string node;
    std::string method;
    Outcome outcome = Outcome::match;
    bool warning = false;
    double seconds = 0.0;
    std::string error;
    std::string nearest;
    WorstValue worst;
    nlohmann::json whole; ///< the line as it stands
};

/// Reads a results file (docs/results-format.md) line after line, with one line in memory at a time. A line that cannot
/// be read is counted and passed over.
class ResultsReader {
public:
    /// Reads the header. Throws std::runtime_error where the stream holds no results file, or one of a later version.
    explicit ResultsReader(std::istream& in);

    const ResultsHeader& header() const { return header_; }
    /// The next record; false at the end.
    bool next(ResultRecord& record);
    /// Whether the last line was there. Only after `next` has returned false.
    bool isComplete() const { return !summary_.is_null(); }
    /// The object of the last line, or null.
    const nlohmann::json& summary() const { return summary_; }
    std::uint64_t malformedLines() const { return malformed_; }
    /// Which line is the first that cannot be read, and why: "line 12: ...".
    const std::string& firstMalformed() const { return firstMalformed_; }

private:
    bool nextLine(std::string& line);
    void passOver(const std::string& why);

    std::istream& in_;
    std::vector<char> chunk_;
    std::size_t chunkAt_ = 0;
    std::size_t chunkEnd_ = 0;
    std::uint64_t lineNumber_ = 0;
    std::uint64_t malformed_ = 0;
    std::string firstMalformed_;
    std::string line_;
    ResultsHeader header_;
    nlohmann::json summary_;
};

} // namespace zent
