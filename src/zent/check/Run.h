#pragma once

#include "zent/proxies/PointWalk.h"
#include "zent/proxies/Registry.h"
#include "zent/values/json.h"

#include <exception>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace zent {

class Arguments;
class Port;
struct Mismatch;

/// What the flags of the command set up for one run.
struct RunSettings {
    bool ignoreDeformer = true;   ///< records of deformers are not evaluated and count as ignored
    bool stopOnFirstError = true; ///< the run ends at the first record that does not match
    float epsilon = 0.001f;       ///< the tolerance of every comparison
    unsigned int verbose = 0;     ///< 1: start and end lines of each record; 2: closures as well
    std::set<std::string> skip;   ///< methods that are not run
};

/// Is told where a run is.
class RunProgress {
public:
    virtual void beginRecord(const std::string& node, const std::string& method) = 0;
    /// The record of the last `beginRecord` is a deformer's, which may take long.
    virtual void beginPoints() = 0;

protected:
    ~RunProgress() = default;
};

/// Where a run's messages to its user go. Reports go to the Log.
struct Display {
    std::function<void(const std::string&)> info;
    std::function<void(const std::string&)> warning;
    std::function<void(const std::string&)> error;
    RunProgress* progress = nullptr;
};

/// How a record ended.
enum class RecordEnd { match, mismatch, error, ignored, unknown, skipped };

/// Sees a run as it goes, and may widen what matches. A run without one is `ZentCheck`'s.
class RunObserver {
public:
    RunObserver() = default;
    RunObserver(const RunObserver&) = delete;
    RunObserver& operator=(const RunObserver&) = delete;
    virtual ~RunObserver() = default;

    virtual void beginRecord(const std::string& /*node*/, const std::string& /*method*/) {}
    /// The results of a record that is no deformer's, and whether they match. The verdict is what this returns.
    virtual bool judge(const json& /*maya*/, const json& /*zent*/, bool matches) { return matches; }
    /// A deformer's record, before its first point.
    virtual void beginPoints(const PointWalk& /*walk*/, const std::vector<Port>& /*ports*/) {}
    /// Each of its points, and whether it matches. The verdict is what this returns.
    virtual bool judgePoint(const PointPair& /*point*/, bool matches) { return matches; }
    /// What the log has of a mismatch by now.
    virtual void mismatch(const Mismatch& /*mismatch*/, const Arguments& /*args*/) {}
    /// Whether the run goes on after a record that could not be read or evaluated, as the log tells by now.
    virtual bool survives(const std::exception& /*error*/) { return false; }
    /// Whether the run goes on.
    virtual bool endRecord(RecordEnd /*end*/) { return true; }
};

/// The walk over a manifest's records. It needs no more of its driver than this: the records, the settings and the
/// display; the resource file is the one that `Element::storage()` has loaded, and the Log must be ready for lines.
class Run {
public:
    /// What became of a record.
    enum Outcome : unsigned { kMismatch = 0, kMatch = 1, kIgnored = 2 };

    Run(Registry& registry, RunSettings settings, Display display, RunObserver* observer = nullptr);

    /// Whether no record of the manifest mismatched. A record that throws is logged and ends the run with a plain
    /// std::exception; one without "node_name" or "method" ends it with the JSON library's error.
    bool check(json manifest);

    /// The same, record by record: false from `next` ends the run, and `end` yields what `check` does.
    bool next(json&& record);
    bool end() const;
    /// What `end` goes by: whether the run stopped at a record, the methods that it ignored, and whether all matched.
    bool isStopped() const { return stopped_; }
    const std::set<std::string>& ignored() const { return ignored_; }
    bool matched() const { return matched_; }
    /// What `end` tells of them.
    static std::string ignoredText(const std::set<std::string>& methods);

    /// One record: its outcome. A mismatch has been reported to the log by then. Throws what the getters, the adapter
    /// and the comparison throw.
    unsigned checkSingle(json record) const;

private:
    RecordEnd run(json&& record, const std::string& node, const std::string& method);
    RecordEnd fail(const std::string& node, const std::string& method, const std::exception& error);
    unsigned compareOnce(const Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const;
    unsigned comparePoints(Proxy& proxy, const Arguments& args, const std::vector<Port>& ports) const;
    unsigned reportMismatch(const Mismatch& mismatch, const Arguments& args) const;

    Registry& registry_;
    RunSettings settings_;
    Display display_;
    RunObserver* observer_;
    bool matched_ = true;
    bool stopped_ = false;
    std::set<std::string> ignored_;
};

} // namespace zent
