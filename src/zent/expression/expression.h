#pragma once

#include "zent/expression/Value.h"
#include "zent/math/types.h"

#include <vector>

namespace zent {

/// Runs the byte code of an expression node. `inputs` are the node's inputs, which the code reads by slot; the result
/// is what it wrote by slot, 0 where it wrote none. Throws what VM throws.
svec<float, 16> expression(svec<float, 16> inputs, std::vector<unsigned char> code, std::vector<Value> constants);

} // namespace zent
