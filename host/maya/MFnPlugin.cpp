#include <maya/MFnPlugin.h>

#include "Commands.h"
#include "setStatus.h"

MFnPlugin::MFnPlugin(MObject& plugin, const char*, const char*, const char*, MStatus* status) : MFnBase(plugin) {
    setStatus(status, true);
}

MStatus MFnPlugin::registerCommand(const MString& name, MCreatorFunction creator, MCreateSyntaxFunction createSyntax) {
    return host::registerCommand(name.asChar(), {creator, createSyntax}) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MFnPlugin::deregisterCommand(const MString& name) {
    return host::deregisterCommand(name.asChar()) ? MStatus::kSuccess : MStatus::kFailure;
}
