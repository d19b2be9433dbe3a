#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>
#include <nlohmann/json.hpp>

#include <string>

namespace zent {

class WholeFiles;

/// Adds a scene file with all that a manifest's records read, and beside it, "OUTPUT.bin", the file of its large shapes
/// if there are any.
void addSnapshot(const nlohmann::json& manifest, const std::string& output, WholeFiles& files);

/// The command `ZentSnapshot -manifest M -output SCENE [-resource R] [-namespace NS] [-frames "1-24"] [-step 1]`:
/// writes a scene file with all that the manifest's records read, as it is evaluated now, so that a check of the same
/// manifest over that scene gives the log that it gives over this one. With frames, one scene for each, at its time.
/// The resource file is not read, and cannot be written over. Large geometry goes into a file beside the scene.
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
