#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace zent {

/// Prints the byte code of an expression, a block of a resource file, one instruction a line, and the constants that it
/// uses where their block is given. Throws std::runtime_error for a file that cannot be opened or has no such block,
/// and what ResourceStorage throws.
void disassemble(const std::string& file, unsigned int block, std::optional<unsigned int> constantsBlock,
                 std::ostream& out);

} // namespace zent
