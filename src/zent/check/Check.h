#pragma once

#include "zent/check/Run.h"
#include "zent/proxies/Registry.h"
#include "zent/values/json.h"

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <memory>
#include <string>

namespace zent {

/// The command: `ZentCheck MANIFEST RESOURCE [flags]` holds the node functions against Maya in the open scene.
///
/// Its result is true when every record that ran matched. Its status is a failure only where the manifest did not open
/// or an exception ended the run; the exception's text is shown as an error.
class ZentCheck : public MPxCommand {
public:
    static MString name;
    static Registry sProxies;

    static void* creator();
    static MSyntax createSyntax();

    MStatus doIt(const MArgList& args) override;
    bool isUndoable() const override { return false; }
    bool hasSyntax() const override { return true; }

    /// Walks the manifest with the command's settings; see Run::check.
    bool check(json manifest);
    unsigned checkSingle(json record);

    /// Files an adapter under its name; an earlier one of that name goes.
    static void addProxy(std::unique_ptr<Proxy> proxy);
    /// Fills the registry the first time; later calls leave it as it is.
    static void initProxies();

    /// Every setting but `skip` at its default.
    void reset();
    /// Closes the log, and marks the resource storage as not loaded.
    static void teardown();

private:
    RunSettings settings_;
};

} // namespace zent
