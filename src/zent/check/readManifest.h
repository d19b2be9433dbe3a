#pragma once

#include "zent/values/json.h"

#include <istream>

namespace zent {

/// A manifest as it stands. Throws the JSON library's parse error.
json readManifest(std::istream& file);

} // namespace zent
