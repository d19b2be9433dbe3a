#pragma once

#include "zent/values/json.h"

#include <string>

namespace zent {

class Arguments;

/// A record's arguments by name, as docs/results-format.md tells of "inputs". Names are those of Maya's plugs by the
/// table of nodes. An entry that cannot be read has no value.
json inputsOf(const std::string& method, const Arguments& args);

/// The curve of an `animCurve` record around its input, as docs/results-format.md tells of "samples"; null where it
/// cannot be evaluated.
json samplesOf(const Arguments& args);

} // namespace zent
