#pragma once

#include "zentcheck/Options.h"
#include "zentreport/Report.h"

#include <optional>
#include <string>

namespace host {

/// The JUnit XML and the page that a run is asked for. They are made out of its results file, which is a temporary one
/// where none is asked for.
class Reports {
public:
    /// Opens them. Throws std::runtime_error where a file cannot be written, or is one that the run reads.
    explicit Reports(const Options& options);
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;
    ~Reports();

    /// The results file that the run should write, empty for none.
    const std::string& results() const { return results_; }
    /// After the run. Throws std::runtime_error where a file could not be written.
    void write();

private:
    std::string results_;
    std::string name_; ///< of the results in the reports
    bool isTemporary_ = false;
    std::optional<report::Report> report_;
};

} // namespace host
