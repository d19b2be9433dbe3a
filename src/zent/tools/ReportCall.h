#pragma once

#include "zent/check/Run.h"
#include "zent/tools/ReportObserver.h"
#include "zent/values/json.h"

#include <maya/MArgDatabase.h>

#include <cstddef>
#include <string>

/// A call of ZentReport in its parts, for what runs its records in another way.
namespace zent {

/// What a call asks for.
struct ReportCall {
    std::string manifest;
    std::string resource;
    std::string results;
    RunSettings run;
    ReportSettings report;
    bool isChained = false;
    json flags = json::object(); ///< those that were given, by their long names

    /// With the settings that hold where no flag says otherwise.
    ReportCall(std::string manifestPath, std::string resourcePath);
};

/// The flags that the check has not, and all of them for the results file. Throws std::runtime_error for a bad value.
void readReportFlags(const MArgDatabase& database, ReportCall& call);

/// Opens the results file that is asked for, if any, and writes its header. Throws std::runtime_error where it cannot
/// be written, or is one that the run reads.
void openResults(const ReportCall& call, std::size_t records, ResultsWriter& writer);

/// A results file's line that is made as JSON.
std::string resultsLine(const json& value);

} // namespace zent
