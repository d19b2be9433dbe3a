#pragma once

#include "zent/proxies/Registry.h"
#include "zent/values/json.h"

#include <functional>
#include <set>
#include <string>

namespace zent {

class Arguments;
class Port;

/// What the flags of the command set up for one run.
struct RunSettings {
    bool ignoreDeformer = true;   ///< records of deformers are not evaluated and count as ignored
    bool stopOnFirstError = true; ///< the run ends at the first record that does not match
    float epsilon = 0.001f;       ///< the tolerance of every comparison
    unsigned int verbose = 0;     ///< 1: start and end lines of each record; 2: closures as well
    std::set<std::string> skip;   ///< methods that are not run
};

/// Where a run's messages to its user go. Reports go to the Log.
struct Display {
    std::function<void(const std::string&)> info;
    std::function<void(const std::string&)> warning;
    std::function<void(const std::string&)> error;
};

/// The walk over a manifest's records. It needs no more of its driver than this: a parsed manifest, the settings and
/// the display; the resource file is the one that `Element::storage()` has loaded, and the Log must be ready for lines.
class Run {
public:
    /// What became of a record.
    enum Outcome : unsigned { kMismatch = 0, kMatch = 1, kIgnored = 2 };

    Run(Registry& registry, RunSettings settings, Display display);

    /// Whether no record of the manifest mismatched. A record that throws is logged and ends the run with a plain
    /// std::exception; one without "node_name" or "method" ends it with the JSON library's error.
    bool check(json manifest) const;

    /// One record: its outcome. A mismatch has been reported to the log by then. Throws what the getters, the adapter
    /// and the comparison throw.
    unsigned checkSingle(json record) const;

private:
    unsigned compareOnce(const Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const;
    unsigned comparePoints(Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const;

    Registry& registry_;
    RunSettings settings_;
    Display display_;
};

} // namespace zent
