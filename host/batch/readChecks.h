#pragma once

#include <istream>
#include <string>
#include <vector>

namespace batch {

/// One check of a batch.
struct Check {
    std::string name; ///< unique in its batch
    std::string manifest;
    std::string resource;           ///< empty for none
    std::string scene;              ///< empty for none
    std::vector<std::string> flags; ///< the command's, as it takes them: "-epsilon", "0.01", ...
};

struct Checks {
    std::vector<Check> checks;
    std::vector<std::string> problems; ///< entries that are none, each with its place
};

/// Reads a list of checks, JSON Lines (docs/batch.md). A line that is no check is a problem, and the others are read.
/// Paths that are not absolute start from `folder`; `path` is what problems call the list.
Checks readList(std::istream& list, const std::string& folder, const std::string& path);

/// The checks of the manifests that a shell's pattern finds, by name, each with the resource file and the scenes that
/// lie beside it. Throws std::runtime_error where there are none.
Checks findChecks(const std::string& pattern);

/// What the option asks for: the checks of a list, or of a pattern where no such file is there. Throws
/// std::runtime_error where the list cannot be opened.
Checks readChecks(const std::string& listOrPattern);

/// Whether a check is one of part `part` of `parts`, from 1 on. It depends on the name alone.
bool isInShard(const std::string& name, unsigned int part, unsigned int parts);

} // namespace batch
