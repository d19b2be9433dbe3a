#pragma once

#include <set>
#include <string>
#include <vector>

namespace zent {

class RunProgress;
class WholeFiles;

/// What to write a manifest of.
struct ExportSettings {
    std::string manifest;
    std::string resource;
    std::string notes; ///< a file for the notes; empty for none
    bool onlySelected = false;
    bool withHistory = false;        ///< and what is upstream of what is selected
    std::string nameSpace;           ///< only the nodes in it, by names for a check in it; empty for all nodes
    std::set<std::string> skip;      ///< methods to leave out
    std::set<std::string> only;      ///< methods to keep; empty for all
    RunProgress* progress = nullptr; ///< told of each node, in the place of a record, and of its type
};

/// What became of an export.
struct ExportOutcome {
    std::size_t records = 0;
    std::size_t nodes = 0; ///< that were looked at
    std::string manifest;  ///< its text
    std::string notes;     ///< records by method, what was left out and why, node types without a method
};

/// Adds a manifest of the open scene to the files, and the resource file that it refers to. Throws std::runtime_error
/// for a file that cannot be written, or a method that does not exist.
ExportOutcome exportManifest(const ExportSettings& settings, WholeFiles& files);

} // namespace zent
