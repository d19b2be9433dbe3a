#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

namespace zent {

/// The command `ZentReport MANIFEST RESOURCE [flags]`: checks what `ZentCheck` checks, by the same arguments and flags
/// and with the same log, but deformers too unless it is told otherwise, and on after a mismatch and after a record
/// that cannot be read or evaluated. It measures how far off everything is, and writes a results file
/// (docs/results-format.md).
///
/// Its result is the summary, as the file's last line has it, in JSON. Its status is a failure where the manifest
/// cannot be read, or the results file cannot be written.
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
