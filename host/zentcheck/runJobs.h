#pragma once

#include "maya/Commands.h"
#include "zentcheck/Terminal.h"

#include <string>
#include <vector>

namespace host {

/// What the command `ZentCheck`, or `ZentReport`, does on the words of a call, by worker processes that share out the
/// manifest's records: the same messages, log and results in the same order, and the same outcome. The open scene and
/// the resource file are in memory once.
CommandOutcome runJobs(unsigned int jobs, bool isReport, const std::vector<std::string>& words, Terminal& terminal);

} // namespace host
