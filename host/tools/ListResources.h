#pragma once

#include <iosfwd>
#include <string>

namespace zent {

/// Prints a line for each block of a resource file: its number, its size in bytes, and the records that its bytes could
/// be. A block has no type of its own, so this is a guess from sizes and from how the numbers look. Throws
/// std::runtime_error for a file that cannot be opened, and what readResourceBlocks throws.
void listResources(const std::string& file, std::ostream& out);

} // namespace zent
