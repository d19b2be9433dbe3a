#pragma once

#include <string>
#include <vector>

namespace zent {

/// One input or output of a method, as a record gives it.
struct ValueInfo {
    std::string name; ///< of an output: Maya's plug; empty for an input
    /// "Float", "Mat4", "Curve" ...: one entry of that type; "Float[]": a list of entries; "Float{}" and "Float{}{}": a
    /// map of entries by one logical index or two. "Euler" is a rotation, read as a vector of three radians.
    std::string type;
    unsigned least = 1; ///< entries that it takes
    unsigned most = 1;  ///< the same; `kAnyNumber` where there is no limit
};

/// What a method reads, for those that write manifests, check them, or call node functions without one.
struct MethodInfo {
    std::string name;
    std::string subsystem;          ///< "utility", "constraint", "deformer" ...
    bool isDeformer = false;        ///< its one output is a shape, compared point by point
    std::vector<ValueInfo> results; ///< by attribute number
    std::vector<ValueInfo> arguments;
};

} // namespace zent
