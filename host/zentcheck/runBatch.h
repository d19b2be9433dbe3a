#pragma once

#include "zentcheck/Options.h"
#include "zentcheck/Terminal.h"

namespace host {

/// Runs a list of checks, each in a process of its own: the program's status.
int runBatch(const Options& options, Terminal& terminal);

} // namespace host
