#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace host {

/// What the command line asks for.
struct Options {
    std::string manifest;
    std::string resource;
    std::optional<std::string> scene;
    std::optional<std::string> plugin;
    std::vector<std::string> flags;        ///< the command's, as it takes them: "-verbose", "2", ...
    std::string listResources;             ///< a resource file to tell about, instead of a run
    std::string disassemble;               ///< a resource file to show a block of, instead of a run
    unsigned int block = 0;                ///< its byte code
    std::optional<unsigned int> constants; ///< its constants
    std::string compileExpression;         ///< a text to compile, instead of a run
    std::string inputs;                    ///< the names of its slots, "a;b"
    std::string outputs;

    bool has(const char* flag) const;
    /// The words of the command's call.
    std::vector<std::string> commandWords() const;
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
