#include "zentreport/Tally.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>

namespace report {

using zent::Outcome;

void Counts::add(const zent::ResultRecord& record) {
    ++outcomes.at(static_cast<std::size_t>(record.outcome));
    warnings += record.warning ? 1 : 0;
}

std::uint64_t Counts::records() const {
    return std::accumulate(outcomes.begin(), outcomes.end(), std::uint64_t{0});
}

void MethodTally::add(const zent::ResultRecord& record) {
    counts.add(record);
    if (!record.nearest.empty()) {
        isKnown = false;
        nearest = record.nearest;
    }
    const bool isMismatch = record.outcome == Outcome::mismatch;
    if (!record.worst.isMeasured || (isWorstMismatch && !isMismatch)) {
        return;
    }
    if ((isMismatch && !isWorstMismatch) || !worst.isMeasured || record.worst.size > worst.size) {
        isWorstMismatch = isMismatch;
        worst = record.worst;
        worstNode = record.node + "(" + record.method + ")";
    }
}

void Tally::add(const zent::ResultRecord& record) {
    counts.add(record);
    all.add(record);
    methods[record.method].add(record);
}

bool Tally::hasProblem() const {
    return std::any_of(files.begin(), files.end(), [](const FileTally& file) { return !file.problem.empty(); });
}

std::string worstText(const zent::WorstValue& worst) {
    return fmt::format("{:.3g}{}", worst.value,
                       worst.unit == "degrees"    ? " degrees"
                       : worst.unit == "distance" ? " units"
                                                  : "");
}

std::string Tally::verdict() const {
    const bool hasUnknown =
        std::any_of(methods.begin(), methods.end(), [](const auto& method) { return !method.second.isKnown; });
    std::string text =
        fmt::format("{} records: {} match, {} mismatch, {} error, {} ignored{}, {} skipped", counts.records(),
                    counts[Outcome::match], counts[Outcome::mismatch], counts[Outcome::error], counts[Outcome::ignored],
                    hasUnknown ? " (unknown method)" : "", counts[Outcome::skipped]);
    if (counts.warnings > 0) {
        text += fmt::format(", {} warnings", counts.warnings);
    }
    if (all.worst.isMeasured) {
        text += fmt::format("; worst {} at {}", worstText(all.worst), all.worstNode);
    }
    return text;
}

} // namespace report
