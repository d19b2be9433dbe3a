#pragma once

#include "batch/readChecks.h"

#include <string>

namespace batch {

/// Makes a whole results file out of what a check that did not get to its end has written, which may be nothing or end
/// within a line: its records, one more that is the error, and a summary. Throws std::runtime_error where the file
/// cannot be written.
void completeFailed(const std::string& path, const Check& check, const std::string& error);

} // namespace batch
