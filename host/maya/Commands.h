#pragma once

#include <maya/MStatus.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace host {

/// A command as a plug-in registers it.
struct Command {
    MCreatorFunction creator = nullptr;
    MCreateSyntaxFunction createSyntax = nullptr;
};

using CommandResult = std::variant<std::monostate, bool, int, double, std::string>;

/// What a call came to.
struct CommandOutcome {
    std::string problem; ///< why the command was not run, empty if it was
    MStatus status;      ///< what doIt returned
    CommandResult result;
};

/// False where the name is taken.
bool registerCommand(const std::string& name, Command command);
/// False where there is no such command.
bool deregisterCommand(const std::string& name);
OPENMAYA_EXPORT bool hasCommand(const std::string& name);

/// Makes a command's object, runs it on the words of a call, and takes it down. Words that do not fit the command's
/// syntax are told as a problem, and the command is not run.
OPENMAYA_EXPORT CommandOutcome runCommand(const std::string& name, const std::vector<std::string>& words);

/// The call that is running.
struct RunningCall {
    MSyntax syntax;
    CommandResult result;
};
RunningCall& runningCall();

} // namespace host
