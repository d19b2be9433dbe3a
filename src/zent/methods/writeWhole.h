#pragma once

#include <string>

namespace zent {

/// Writes a file that appears whole or not at all: beside its place first, and then renamed. Throws std::runtime_error
/// "cannot write PATH".
void writeWhole(const std::string& path, const std::string& bytes);

} // namespace zent
