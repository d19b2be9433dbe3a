#pragma once

namespace zent {

/// a + b.
float addDoubleLinear(float a, float b);

} // namespace zent
