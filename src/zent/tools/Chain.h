#pragma once

#include "zent/check/Run.h"
#include "zent/results/ResultsWriter.h"
#include "zent/tools/measure.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace zent {

namespace rig {
class Graph;
}

/// How far off the records of a manifest are when they read each other's results in place of Maya's values, and where
/// that comes from (docs/rig.md).
class Chain {
public:
    /// Evaluates the rig over the open scene and measures its outputs, those of deformers too unless the settings leave
    /// them out.
    Chain(json manifest, const RunSettings& settings, const Tolerance& tolerance);

    /// What the results file has of a record; null for one that is not in the rig.
    const ChainLine* at(std::size_t index) const;
    /// One line for each record that is off: "armSkin is off by 0.004 units because elbow.rotate is (0.03 degrees),
    /// which is off in itself".
    const std::vector<std::string>& lines() const { return lines_; }
    /// The summary's "chain".
    json summary() const;

private:
    struct Record {
        bool isCompared = false;
        bool ownIsOff = false; ///< with Maya's inputs
        std::vector<Statistics> statistics;
        std::vector<std::string> plugs; ///< of the outputs
        std::string error;
        ChainLine line;
    };
    /// The furthest value of a record.
    struct Worst {
        const Statistics* statistics = nullptr;
        std::string plug;
        double size() const;
    };

    void compare(rig::Graph& graph, std::size_t place, json record, const RunSettings& settings,
                 const Tolerance& tolerance);
    Worst worstOf(const Record& record) const;
    bool isOff(std::size_t index) const;
    std::string amountOf(std::size_t index) const;
    void tellCause(std::size_t index);

    std::map<std::size_t, Record> records_; ///< by their place in the manifest
    std::map<std::size_t, std::string> names_;
    std::map<std::size_t, std::string> methods_;
    std::vector<std::string> lines_;
    std::vector<std::string> notes_;
    std::size_t added_ = 0;
};

} // namespace zent
