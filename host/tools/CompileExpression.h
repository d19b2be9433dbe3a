#pragma once

#include <iosfwd>
#include <string>

namespace zent {

/// Compiles a file in Maya's expression language, and prints the slots of its inputs and outputs, and the code as the
/// assembler's text with the source's lines as comments. `inputs` and `outputs` are names with semicolons between; the
/// text's own names in their order where both are empty. Throws std::runtime_error, "FILE: line LINE, column COLUMN:
/// ..." and what is wrong there.
void printCompiledExpression(const std::string& file, const std::string& inputs, const std::string& outputs,
                             std::ostream& out);

} // namespace zent
