#pragma once

namespace zent {

/// a b.
float multDoubleLinear(float a, float b);

} // namespace zent
