#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zent {

/// The name that someone meant who wrote `name`: the one of `names` with the fewest letters left out, added, changed or
/// swapped with the next, whatever their case; the first of equals. Empty where no name is as near as a third of its
/// letters.
std::string nearestName(std::string_view name, const std::vector<std::string>& names);

/// ", did you mean \"NAME\"?" for the end of a message; empty where no name is near.
std::string nearestNameHint(std::string_view name, const std::vector<std::string>& names);

} // namespace zent
