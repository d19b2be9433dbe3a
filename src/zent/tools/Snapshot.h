#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

namespace zent {

/// The command `ZentSnapshot -manifest M -output SCENE [-resource R] [-namespace NS] [-frames "1-24"] [-step 1]`:
/// writes a scene file with all that the manifest's records read, as it is evaluated now, so that a check of the same
/// manifest over that scene gives the log that it gives over this one. With frames, one scene for each, at its time.
/// The resource file is taken as the check takes it, and not read: a snapshot has its geometry in itself.
///
/// Its result is the number of files. It fails, with its reason shown, where the manifest cannot be read or a file
/// cannot be written; each file is there whole or as it was, with frames also those of the frames before.
class ZentSnapshot : public MPxCommand {
public:
    static constexpr const char* kName = "ZentSnapshot";

    static void* creator();
    static MSyntax createSyntax();

    MStatus doIt(const MArgList& args) override;
    bool isUndoable() const override { return false; }
    bool hasSyntax() const override { return true; }
};

} // namespace zent
