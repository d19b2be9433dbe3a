#pragma once

#include <array>
#include <string>

namespace host {

/// A flag of the command, which is passed on only where it is given.
struct CommandFlag {
    const char* option;
    const char* flag; ///< with its dash
    const char* valueName;
    std::string (*check)(std::string&); ///< what is wrong with a value, empty for nothing
    const char* help;
    bool isReports = false; ///< ZentCheck does not have it
};

inline constexpr const char* kLogFolder = "-outputDirectory";

using CommandFlags = std::array<CommandFlag, 10>;
const CommandFlags& commandFlags();

/// Checks of values, as those of a flag.
std::string checkNumber(std::string& text);
std::string checkPositive(std::string& text);
std::string checkCount(std::string& text);

} // namespace host
