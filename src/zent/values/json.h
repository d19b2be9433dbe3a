#pragma once

#include <nlohmann/json_fwd.hpp>

namespace zent {

/// The manifest's values and both sides' results. This header only declares it: a source that builds or reads one
/// includes <nlohmann/json.hpp>.
using json = nlohmann::json;

} // namespace zent
