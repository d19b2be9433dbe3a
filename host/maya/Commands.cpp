#include "Commands.h"

#include <maya/MArgDatabase.h>
#include <maya/MPxCommand.h>

#include <map>
#include <memory>

namespace host {
namespace {

std::map<std::string, Command>& commands() {
    static std::map<std::string, Command> registered;
    return registered;
}

} // namespace

bool registerCommand(const std::string& name, Command command) {
    return commands().emplace(name, command).second;
}

bool deregisterCommand(const std::string& name) {
    return commands().erase(name) > 0;
}

bool hasCommand(const std::string& name) {
    return commands().count(name) > 0;
}

CommandOutcome runCommand(const std::string& name, const std::vector<std::string>& words) {
    const auto found = commands().find(name);
    if (found == commands().end()) {
        return {"there is no command " + name, MStatus::kNotFound, {}};
    }
    RunningCall& call = runningCall();
    call = {};
    MArgList arguments;
    for (const std::string& word : words) {
        arguments.addArg(word.c_str());
    }
    const std::unique_ptr<MPxCommand> command(static_cast<MPxCommand*>(found->second.creator()));
    if (command->hasSyntax() && found->second.createSyntax != nullptr) {
        call.syntax = found->second.createSyntax();
        const std::string problem = MArgDatabase(call.syntax, arguments).problem();
        if (!problem.empty()) {
            return {problem, MStatus::kInvalidParameter, {}};
        }
    }
    const MStatus status = command->doIt(arguments);
    return {{}, status, call.result};
}

RunningCall& runningCall() {
    static RunningCall call;
    return call;
}

} // namespace host
