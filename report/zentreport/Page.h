#pragma once

#include "zentreport/Tally.h"

#include <cstddef>
#include <ostream>
#include <set>
#include <string>

namespace report {

inline constexpr std::size_t kFullRecords = 1000;               ///< that the page holds with all that they have
inline constexpr std::size_t kChained = 20000;                  ///< records of rigs that it draws as graphs
inline constexpr std::size_t kRows = 200000;                    ///< that its table has
inline constexpr std::size_t kFullBytes = std::size_t{1} << 28; ///< of full records; shapes beyond it are left out

/// Gathers what the page shows: a row for each of the worst records, and the worst of those in full. Memory is bounded
/// by the three limits.
class Page {
public:
    void add(const zent::ResultRecord& record, std::size_t file);
    /// The page: one HTML file that needs no other.
    void write(std::ostream& out, const Tally& tally) const;
    /// What of the page is not the same for all results: script elements that hold JSON.
    void writeData(std::ostream& out, const Tally& tally) const;

private:
    /// Where a record stands among the worst.
    struct Rank {
        int outcome = 0;   ///< mismatches first
        double size = 0.0; ///< how far it is off
        std::size_t number = 0;

        bool operator<(const Rank& other) const;
    };
    struct Row {
        Rank rank;
        std::size_t file = 0;
        std::uint64_t index = 0;
        std::string node;
        std::string method;
        zent::Outcome outcome = zent::Outcome::match;
        bool warning = false;
        double seconds = 0.0;
        double value = 0.0;
        std::string unit;
        std::string output;
        std::uint64_t over = 0;
        std::uint64_t count = 0;
        std::string text;

        bool operator<(const Row& other) const { return rank < other.rank; }
    };
    struct Full {
        Rank rank;
        std::string line;

        bool operator<(const Full& other) const { return rank < other.rank; }
    };

    static Rank rankOf(const zent::ResultRecord& record, std::size_t number);
    void keepFull(const Rank& rank, const zent::ResultRecord& record);

    void keepChain(const zent::ResultRecord& record, std::size_t file, std::size_t number);

    std::set<Row> rows_;
    nlohmann::json chains_ = nlohmann::json::array(); ///< of chained runs, what the graph shows of a record
    std::size_t chainsLeftOut_ = 0;
    std::set<Full> full_;
    std::size_t fullBytes_ = 0;
    std::size_t records_ = 0;
};

} // namespace report
