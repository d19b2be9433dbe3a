#pragma once

#include "zent/values/Port.h"

#include <vector>

namespace zent {

/// A record's two lists by attribute number.
struct RecordEntries {
    std::vector<Port> ports; ///< the results
    Arguments args;
};

/// Takes them out of a record; its entries are used up. Throws std::runtime_error or the JSON library's errors for a
/// bad entry.
RecordEntries takeEntries(json& record);

/// The text of a record's "node_name" or "method". Throws the JSON library's errors where there is none.
std::string recordText(const json& record, const char* key);

} // namespace zent
