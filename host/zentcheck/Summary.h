#pragma once

#include "zentcheck/Options.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace host {

/// What ZentReport yields about a run, for people.
struct Summary {
    std::string line;                  ///< "63 records: 61 match, ...; worst 11.3 degrees at wrist(orientConstraint)"
    std::vector<std::string> table;    ///< a line for each method, below a line of headings
    std::vector<std::string> problems; ///< what --strict takes as failures
    bool hasMismatch = false;
    bool hasError = false;
};

/// Reads the summary's object (docs/results-format.md). Throws where it is none.
Summary readSummary(const nlohmann::json& summary, const Options& options);

} // namespace host
