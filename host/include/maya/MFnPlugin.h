#pragma once

#include <maya/MFnBase.h>
#include <maya/MPxCommand.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

/// A plug-in's registrations.
class OPENMAYA_EXPORT MFnPlugin : public MFnBase {
public:
    explicit MFnPlugin(MObject& plugin, const char* vendor = "Unknown", const char* version = "Unknown",
                       const char* requiredApiVersion = "Any", MStatus* status = nullptr);

    MStatus registerCommand(const MString& name, MCreatorFunction creator,
                            MCreateSyntaxFunction createSyntax = nullptr);
    MStatus deregisterCommand(const MString& name);
};
