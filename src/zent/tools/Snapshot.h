#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

namespace zent {

/// The command `ZentSnapshot -manifest M -output SCENE [-namespace NS] [-frames "1-24"] [-step 1]`: writes a scene file
/// with all that the manifest's records read, as it is evaluated now, so that a check of the same manifest over that
/// scene gives the log that it gives over this one. With frames, one scene for each, at its time.
///
/// Its result is the number of files. It fails, with its reason shown and no file changed, where the manifest cannot be
/// read or a file cannot be written.
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
