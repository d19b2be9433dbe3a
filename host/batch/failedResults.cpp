#include "batch/failedResults.h"

#include "zent/results/ResultsReader.h"
#include "zent/results/ResultsWriter.h"

#include <nlohmann/json.hpp>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace batch {

namespace {

using nlohmann::ordered_json;

std::string utcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

std::string dumped(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

ordered_json orNull(const std::string& text) {
    return text.empty() ? ordered_json() : ordered_json(text);
}

/// The flags by their long names, as a run's own header has them.
ordered_json flagsOf(const Check& check) {
    ordered_json flags = ordered_json::object();
    for (std::size_t i = 0; i + 1 < check.flags.size(); i += 2) {
        const ordered_json value = ordered_json::parse(check.flags[i + 1], nullptr, false);
        flags[check.flags[i].substr(1)] =
            value.is_number() || value.is_boolean() ? value : ordered_json(check.flags[i + 1]);
    }
    return flags;
}

/// The header of a run that did not get to write one.
std::string headerOf(const Check& check) {
    const ordered_json flags = flagsOf(check);
    return dumped({{"format", "zent-results"},
                   {"version", 1},
                   {"program", "zentcheck " ZENT_VERSION},
                   {"host", "stand-in"},
                   {"manifest", check.manifest},
                   {"resource", orNull(check.resource)},
                   {"scene", orNull(check.scene)},
                   {"frame", nullptr},
                   {"time", utcNow()},
                   {"records", 1},
                   {"tolerance", flags.value("epsilon", ordered_json(0.001))},
                   {"warn", flags.value("warn", ordered_json())},
                   {"relative", flags.value("relative", ordered_json(0))},
                   {"flags", flags}});
}

/// A record as it is counted: its worst value stands for all.
class Counted {
public:
    explicit Counted(const zent::ResultRecord& record) {
        line.index = record.index;
        line.node = record.node;
        line.method = record.method;
        line.outcome = record.outcome;
        line.warning = record.warning;
        if (record.worst.isMeasured) {
            zent::Statistics& statistics = statistics_.emplace_back();
            statistics.output = record.worst.output;
            statistics.unit = record.worst.unit == "degrees"    ? zent::Unit::degrees
                              : record.worst.unit == "distance" ? zent::Unit::distance
                                                                : zent::Unit::value;
            statistics.count = 1;
            statistics.greatest = record.worst.value;
            line.statistics = &statistics_;
        }
    }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() = default;

    zent::RecordLine line;

private:
    std::vector<zent::Statistics> statistics_;
};

/// Where the last whole line ends, of a file that has its header; else the start. Counts the records before it.
std::uintmax_t readWhole(const std::string& path, zent::ResultsSummary& summary, std::uint64_t& next) {
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) {
        return 0;
    }
    try {
        zent::ResultsReader reader(file);
        zent::ResultRecord record;
        while (reader.next(record)) {
            summary.add(Counted(record).line, !record.nearest.empty());
            next = record.index + 1;
        }
    } catch (const std::runtime_error&) {
        return 0;
    }
    file.clear();
    file.seekg(0);
    std::uintmax_t end = 0;
    std::uintmax_t at = 0;
    std::array<char, 1U << 16> chunk{};
    while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0) {
        for (std::streamsize i = 0; i < file.gcount(); ++i) {
            ++at;
            end = chunk[static_cast<std::size_t>(i)] == '\n' ? at : end;
        }
    }
    return end;
}

} // namespace

void completeFailed(const std::string& path, const Check& check, const std::string& error) {
    zent::ResultsSummary summary;
    zent::RecordLine record;
    record.outcome = zent::Outcome::error;
    record.error = error;
    const std::uintmax_t whole = readWhole(path, summary, record.index);
    zent::ResultsWriter writer;
    writer.open(path, whole);
    if (whole == 0) {
        writer.write(headerOf(check));
    }
    writer.write(record);
    summary.add(record, false);
    writer.write(dumped({{"summary", summary.json(true, 0.0)}}));
    if (!writer.close()) {
        throw std::runtime_error(writer.problem());
    }
}

} // namespace batch
