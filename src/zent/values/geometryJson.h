#pragma once

#include "zent/geometry/Curve.h"
#include "zent/geometry/Surface.h"

#include <nlohmann/json_fwd.hpp>

/// The JSON forms of the records that a result can hold. "cv" is an array of three-number arrays, "matrix" the 16
/// floats of the object-to-world matrix; reading goes through the records' constructors, so that the inverse is
/// rebuilt.
namespace zent {

void to_json(nlohmann::json& value, const Curve& curve);
void from_json(const nlohmann::json& value, Curve& curve);
void to_json(nlohmann::json& value, const Surface& surface);
void from_json(const nlohmann::json& value, Surface& surface);

} // namespace zent
