// The entry points of the plug-in ZentMayaTools: one row in kCommands for each of its commands.
#define MNoVersionString
#define MNoPluginEntry
#include "zent/tools/Manifest.h"
#include "zent/tools/Report.h"
#include "zent/tools/Snapshot.h"

#include <maya/MFnPlugin.h>

#define ZENT_EXPORT __attribute__((visibility("default")))

ZENT_EXPORT extern char MApiVersion[];
char MApiVersion[] = "20190100";

ZENT_EXPORT MStatus initializePlugin(MObject object);
ZENT_EXPORT MStatus uninitializePlugin(MObject object);

namespace {

struct ToolCommand {
    const char* name;
    void* (*creator)();
    MSyntax (*createSyntax)();
};

template <class Command>
constexpr ToolCommand command() {
    return {Command::kName, Command::creator, Command::createSyntax};
}

constexpr ToolCommand kCommands[] = {
    command<zent::ZentManifest>(),
    command<zent::ZentReport>(),
    command<zent::ZentSnapshot>(),
};

} // namespace

/// Fails where the name of a command is taken, with none of them registered.
MStatus initializePlugin(MObject object) {
    MFnPlugin plugin(object, "Unknown", ZENT_VERSION, "Any");
    for (const ToolCommand& command : kCommands) {
        const MStatus status = plugin.registerCommand(command.name, command.creator, command.createSyntax);
        if (status.error()) {
            for (const ToolCommand* registered = kCommands; registered != &command; ++registered) {
                plugin.deregisterCommand(registered->name);
            }
            return status;
        }
    }
    return MStatus::kSuccess;
}

MStatus uninitializePlugin(MObject object) {
    MFnPlugin plugin(object, "Unknown", ZENT_VERSION, "Any");
    MStatus status = MStatus::kSuccess;
    for (const ToolCommand& command : kCommands) {
        const MStatus outcome = plugin.deregisterCommand(command.name);
        status = outcome.error() ? outcome : status;
    }
    return status;
}
