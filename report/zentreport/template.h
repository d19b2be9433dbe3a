#pragma once

#include <string_view>

namespace report {

/// The page without its data, as the build has put it together out of report/page/ and the two libraries.
std::string_view pageTemplate();

} // namespace report
