#pragma once

#include <iosfwd>

namespace zent {

/// Prints each method with its node types, and each result and argument with its type and its plugs.
void listMethods(std::ostream& out);

/// The same as JSON: {"methods": [...], "plugs": [...]}, where "plugs" are those that the table asks for, by node type.
void listMethodsAsJson(std::ostream& out);

} // namespace zent
