#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

namespace zent {

/// The command `ZentReport MANIFEST RESOURCE [flags]`: checks what `ZentCheck` checks, by the same arguments and flags
/// and with the same log, but deformers too unless it is told otherwise, and on after a mismatch.
class ZentReport : public MPxCommand {
public:
    static constexpr const char* kName = "ZentReport";

    static void* creator();
    static MSyntax createSyntax();

    MStatus doIt(const MArgList& args) override;
    bool isUndoable() const override { return false; }
    bool hasSyntax() const override { return true; }
};

} // namespace zent
