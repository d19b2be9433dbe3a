#pragma once

#include "zent/values/json.h"

#include <optional>
#include <string>
#include <vector>

namespace zent {

/// What is wrong with a manifest, found without running it.
struct Mistake {
    std::size_t record = 0; ///< its place in the manifest, from 0 on
    std::string node;       ///< empty where the record does not tell
    std::string method;
    std::string list; ///< "results" or "arguments"; empty for the record itself
    std::optional<unsigned> attribute;
    std::string text;

    /// "record 3, armSkin(skinMesh), arguments, attribute 5: block 10 is not a skin weight list".
    std::string inWords() const;
};

struct LintSettings {
    /// The resource file; without one, blocks are not looked at.
    std::optional<std::string> resource;
    /// Plug names are looked up in the open scene.
    bool hasScene = false;
};

/// Every mistake of a manifest: methods that do not exist; attributes that are missing, surplus or have the wrong
/// number of entries; values of the wrong type; blocks that are missing, cannot be what they are read as, or are read
/// as two things; plugs that do not exist or of which a part leads nowhere, elements that a multi does not have; lists
/// that should ascend and do not; angles above a full turn, which look like degrees; results on plugs that are not the
/// method's. Throws std::runtime_error for a resource file that cannot be read, and what readResourceBlocks throws.
std::vector<Mistake> lint(const json& manifest, const LintSettings& settings);

} // namespace zent
