#pragma once

#include "batch/Workers.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace host {

/// Part `part` of `parts` of a list of checks.
struct Shard {
    unsigned int part = 1;
    unsigned int parts = 1;
};

/// What the command line asks for.
struct Options {
    std::string manifest;
    std::string resource;
    std::optional<std::string> scene; ///< the first
    std::vector<std::string> scenes;
    std::optional<std::string> plugin;
    std::vector<std::string> flags; ///< the command's, as it takes them: "-verbose", "2", ...
    std::string results;            ///< files that a report is written to; any of them, and isStrict, asks for one
    std::string junit;
    std::string page;
    bool isStrict = false;
    bool isChained = false; ///< records read each other's results
    bool isQuiet = false;
    std::vector<std::string> skipped; ///< the methods that are left out
    std::string snapshot;             ///< the scene to write, empty for none
    std::string frames;
    std::string step;
    std::string listResources;             ///< a resource file to tell about, instead of a run
    std::string disassemble;               ///< a resource file to show a block of, instead of a run
    unsigned int block = 0;                ///< its byte code
    std::optional<unsigned int> constants; ///< its constants
    std::string compileExpression;         ///< a text to compile, instead of a run
    std::string inputs;                    ///< the names of its slots, "a;b"
    std::string outputs;
    bool listMethods = false; ///< tell about the methods, instead of a run
    bool asJson = false;
    bool makeManifest = false;            ///< write the manifest and the resource file, instead of a run
    std::string sceneResource;            ///< the resource file of the scene's geometry; empty for that of the manifest
    std::vector<std::string> exportFlags; ///< those of ZentManifest
    bool lint = false;                    ///< look for the manifest's mistakes, instead of a run

    std::string batch;                ///< a list of checks, or a pattern of manifests, instead of one check
    std::optional<unsigned int> jobs; ///< processes
    Shard shard;
    bool resume = false;
    batch::Limits limits; ///< of each check of a list

    bool needsManifest() const {
        return batch.empty() && listResources.empty() && disassemble.empty() && compileExpression.empty() &&
               !listMethods;
    }
    bool isRun() const { return !batch.empty() || (needsManifest() && !lint); }
    /// The resource file that is asked about instead of a run.
    const std::string& toolFile() const {
        return lint ? resource : listResources.empty() ? disassemble : listResources;
    }
    bool has(const char* flag) const;
    /// One of the command's flags, in place of what it has.
    void setFlag(const std::string& flag, const std::string& value);
    /// The value of one of the command's flags, empty if it is not given.
    std::string flagValue(const char* flag) const;
    /// Whether ZentReport runs, not ZentCheck.
    bool wantsReport() const { return isStrict || isChained || !results.empty() || !junit.empty() || !page.empty(); }
    const std::string& geometryFile() const { return sceneResource.empty() ? resource : sceneResource; }
    /// The words of a call of ZentManifest.
    std::vector<std::string> exportWords() const;
    /// The words of the command's call, with a folder of the log that need not be the one that was asked for.
    std::vector<std::string> commandWords(const std::string& logFolder) const;
    /// The folder of the log, empty for none.
    std::string logFolder() const;
    /// The words of a call of ZentSnapshot.
    std::vector<std::string> snapshotWords() const;
};

/// A command line that asks for nothing but a text: help, the version, or the usage after a mistake.
struct UsageExit {
    int status;
    std::string out;
    std::string err;
};

/// Throws UsageExit where there is nothing to run.
Options parseOptions(int argc, char** argv);

} // namespace host
