#pragma once

#include "zent/results/ResultsReader.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace report {

/// How many records came to what.
struct Counts {
    std::array<std::uint64_t, zent::kOutcomeNames.size()> outcomes{};
    std::uint64_t warnings = 0;

    void add(const zent::ResultRecord& record);
    std::uint64_t operator[](zent::Outcome outcome) const { return outcomes.at(static_cast<std::size_t>(outcome)); }
    std::uint64_t records() const;
};

/// The records of one method. The worst value is a mismatch's where there is any, else a match's.
struct MethodTally {
    Counts counts;
    bool isKnown = true;
    std::string nearest;
    bool isWorstMismatch = false;
    zent::WorstValue worst;
    std::string worstNode;

    void add(const zent::ResultRecord& record);
};

/// What a file held.
struct FileTally {
    std::string path;
    zent::ResultsHeader header;
    bool isRead = false;        ///< it is a results file of a version that is known
    bool isInterrupted = false; ///< it ends without its summary
    std::string problem;        ///< what is wrong with it, empty where nothing is
    Counts counts;
    double seconds = 0.0;
};

/// All files together. It grows with the number of methods, never with that of records.
struct Tally {
    std::vector<FileTally> files;
    Counts counts;
    std::map<std::string, MethodTally> methods;
    MethodTally all;

    void add(const zent::ResultRecord& record);
    bool hasProblem() const;
    /// The verdict in one line: "63 records: 61 match, 1 mismatch ...".
    std::string verdict() const;
};

/// "0.0415 at outputX": a value with its unit.
std::string worstText(const zent::WorstValue& worst);

} // namespace report
