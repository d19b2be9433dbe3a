#pragma once

namespace zent {

/// 1 - x.
float reverse(float x);

} // namespace zent
