#pragma once

#include <array>

namespace zent {

/// What became of a record, in the order in which reports count them.
enum class Outcome : unsigned char { match, mismatch, error, ignored, skipped };
inline constexpr std::array<const char*, 5> kOutcomeNames{"match", "mismatch", "error", "ignored", "skipped"};

} // namespace zent
