#pragma once

#include <nlohmann/json.hpp>

namespace zent {

using json = nlohmann::json;

/// What is told of a record that does not match.
struct Mismatch {
    int errorIndex = -1; ///< a deformer's worst point
    json maya;
    json zent;
    json closure;
};

} // namespace zent
