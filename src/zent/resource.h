#pragma once

#include "zent/geometry/shapes.h"

#include <any>
#include <map>
#include <string>
#include <vector>

namespace zent {

/// The blocks of a resource file: read whole at the start of a run, each parsed into its type when it is first asked
/// for. A block has no type of its own; its first reader fixes it for the rest of the run.
class ResourceStorage {
public:
    /// Reads all blocks of a file. A file that cannot be opened leaves the storage as it was, without an error.
    void load(const std::string& path);

    /// The record of a block. Throws std::bad_any_cast if the block was first asked for as another type, and
    /// std::runtime_error, naming the block, where there is no such block or its bytes cannot hold the record.
    template <class T>
    const T& get(unsigned int id);

    bool loaded = false; ///< a whole file has been read and no run has ended since

private:
    std::vector<std::any> values_;
    std::map<unsigned int, std::vector<char>> raw_;
};

} // namespace zent
