#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

namespace zent {

/// The command `ZentManifest -output MANIFEST -resource RESOURCE [flags]`: writes a manifest of the open scene, for
/// `ZentCheck`, and the resource file that it refers to. Its result is the notes: how many records there are, and what
/// was left out and why.
class ZentManifest : public MPxCommand {
public:
    static constexpr const char* kName = "ZentManifest";

    static void* creator();
    static MSyntax createSyntax();

    MStatus doIt(const MArgList& args) override;
    bool isUndoable() const override { return false; }
    bool hasSyntax() const override { return true; }
};

} // namespace zent
