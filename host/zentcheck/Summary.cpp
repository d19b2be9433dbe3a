#include "zentcheck/Summary.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

namespace host {

namespace {

using nlohmann::json;

std::uint64_t countOf(const json& counts, const char* outcome) {
    return counts.at(outcome).get<std::uint64_t>();
}

std::string worstText(const json& worst, const json& method) {
    const std::string unit = worst.at("unit").get<std::string>();
    return fmt::format("{:.3g}{} at {}({})", worst.at("value").get<double>(),
                       unit == "degrees"    ? " degrees"
                       : unit == "distance" ? " units"
                                            : "",
                       worst.at("node").get<std::string>(), method.get<std::string>());
}

/// Why records are ignored: those of unknown methods are a mistake, deformers a setting.
std::string ignoredText(const json& summary, std::uint64_t unknown) {
    const std::uint64_t ignored = countOf(summary, "ignored");
    if (ignored == 0) {
        return "";
    }
    return unknown == ignored ? " (unknown method)"
           : unknown == 0     ? " (deformer)"
                              : fmt::format(" ({} unknown method, {} deformer)", unknown, ignored - unknown);
}

std::vector<std::string> tableOf(const json& methods) {
    std::size_t width = 6;
    for (const json& method : methods) {
        width = std::max(width, method.at("method").get_ref<const std::string&>().size());
    }
    std::vector<std::string> lines{fmt::format("{:<{}} {:>9} {:>9} {:>9} {:>9}  {}", "method", width, "records",
                                               "mismatch", "error", "ran not", "worst")};
    for (const json& method : methods) {
        const json& worst = method.at("worst");
        lines.push_back(fmt::format("{:<{}} {:>9} {:>9} {:>9} {:>9}  {}", method.at("method").get<std::string>(), width,
                                    countOf(method, "records"), countOf(method, "mismatch"), countOf(method, "error"),
                                    countOf(method, "ignored") + countOf(method, "skipped"),
                                    worst.is_null() ? "" : worstText(worst, method.at("method"))));
    }
    return lines;
}

std::vector<std::string> problemsOf(const json& summary, const Options& options) {
    std::vector<std::string> problems;
    if (countOf(summary, "match") + countOf(summary, "mismatch") + countOf(summary, "error") == 0) {
        problems.emplace_back("nothing ran");
    }
    for (const json& method : summary.at("unknown")) {
        problems.push_back("unknown method " + method.get<std::string>());
    }
    std::set<std::string> methods;
    for (const json& method : summary.at("methods")) {
        methods.insert(method.at("method").get<std::string>());
    }
    for (const std::string& method : options.skipped) {
        if (methods.count(method) == 0 && !summary.at("stopped").get<bool>()) {
            problems.push_back("--skip names " + method + ", which no record has");
        }
    }
    return problems;
}

} // namespace

Summary readSummary(const json& summary, const Options& options) {
    std::uint64_t unknown = 0;
    for (const json& method : summary.at("methods")) {
        const json& names = summary.at("unknown");
        if (std::find(names.begin(), names.end(), method.at("method")) != names.end()) {
            unknown += countOf(method, "ignored");
        }
    }
    Summary result;
    result.line = fmt::format("{} records: {} match, {} mismatch, {} error, {} ignored{}, {} skipped",
                              countOf(summary, "records"), countOf(summary, "match"), countOf(summary, "mismatch"),
                              countOf(summary, "error"), countOf(summary, "ignored"), ignoredText(summary, unknown),
                              countOf(summary, "skipped"));
    if (countOf(summary, "warnings") > 0) {
        result.line += fmt::format(", {} warnings", countOf(summary, "warnings"));
    }
    if (const json& worst = summary.at("worst"); !worst.is_null()) {
        result.line += "; worst " + worstText(worst, worst.at("method"));
    }
    if (summary.at("stopped").get<bool>()) {
        result.line += "; stopped before the end";
    }
    if (const auto chain = summary.find("chain"); chain != summary.end()) {
        result.line += fmt::format("; chained: {} match, {} mismatch, {} error", countOf(*chain, "match"),
                                   countOf(*chain, "mismatch"), countOf(*chain, "error"));
        if (const json& worst = chain->at("worst"); !worst.is_null()) {
            result.line += ", worst " + worstText(worst, worst.at("method"));
        }
        result.hasMismatch = countOf(*chain, "mismatch") > 0;
        result.hasError = countOf(*chain, "error") > 0;
    }
    result.table = tableOf(summary.at("methods"));
    result.problems = problemsOf(summary, options);
    result.hasMismatch = result.hasMismatch || countOf(summary, "mismatch") > 0;
    result.hasError = result.hasError || countOf(summary, "error") > 0;
    return result;
}

} // namespace host
