#pragma once

#include "zent/check/Run.h"

#include <maya/MArgDatabase.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <string>

/// What the commands that check a manifest have in common: the call MANIFEST RESOURCE with its flags, and where they
/// show what they have to say.
namespace zent {

struct Flag {
    const char* shortName;
    const char* longName;
    MSyntax::MArgType type;
};

std::string toStd(const MString& text);

/// The two arguments and the seven flags.
void addCheckSyntax(MSyntax& syntax);

/// The settings with what the flags say; sets `namescope`, and points the Log at a file or at Maya's messages.
void readCheckFlags(const MArgDatabase& database, RunSettings& settings);

/// Maya's messages.
Display mayaDisplay();

/// Ends a call: closes the Log, and marks the resource storage as not loaded.
void endCheckCall();

} // namespace zent
