#pragma once

#include "zent/check/CheckCall.h"

#include <string>

namespace zent {

/// The text of a flag, empty where it is not set.
std::string flagText(const MArgDatabase& database, const Flag& flag);

/// The file of the open scene, which no command may write over; empty for none.
std::string openScene();

} // namespace zent
