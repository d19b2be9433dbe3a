#pragma once

namespace zent {

/// a and b.
bool worldVisibility(bool a, bool b);

} // namespace zent
