#pragma once

#include "zent/expression/Assembly.h"
#include "zent/expression/Tree.h"

#include <vector>

namespace zent {

/// Byte code and constants of a typed program, and where in the code the lines of its source begin. Throws
/// ExpressionError for a program that is too large for the machine's operands.
Program emitProgram(const Statement& program, std::vector<SourceMark>& marks);

} // namespace zent
