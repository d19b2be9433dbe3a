#pragma once

namespace zent {

/// `input` held between `lo` and `hi`. The upper bound wins where the two cross.
float clamp(float input, float lo, float hi);

} // namespace zent
