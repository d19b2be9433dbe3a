#include "zent/tools/Report.h"

#include "zent/check/Check.h"
#include "zent/check/CheckCall.h"
#include "zent/check/readManifest.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <nlohmann/json.hpp>

#include <maya/MGlobal.h>

#include <exception>
#include <fstream>

namespace zent {

namespace {

RunSettings defaultSettings() {
    RunSettings settings;
    settings.ignoreDeformer = false;
    settings.stopOnFirstError = false;
    return settings;
}

} // namespace

void* ZentReport::creator() {
    ZentCheck::initProxies();
    return new ZentReport;
}

MSyntax ZentReport::createSyntax() {
    MSyntax syntax;
    addCheckSyntax(syntax);
    return syntax;
}

MStatus ZentReport::doIt(const MArgList& args) {
    namescope.clear();
    const MArgDatabase database(syntax(), args);
    MString path;
    MString resourcePath;
    database.getCommandArgument(0, path);
    database.getCommandArgument(1, resourcePath);
    std::ifstream file(path.asChar());
    if (!file.is_open()) {
        MGlobal::displayError(MString("cannot open file ") + path);
        return MStatus::kFailure;
    }
    MStatus status = MStatus::kSuccess;
    try {
        json manifest = readManifest(file);
        Element::storage().load(toStd(resourcePath));
        RunSettings settings = defaultSettings();
        readCheckFlags(database, settings);
        setResult(Run(ZentCheck::sProxies, settings, mayaDisplay()).check(std::move(manifest)));
    } catch (const std::exception& error) {
        MGlobal::displayError(error.what());
        status = MStatus::kFailure;
    }
    endCheckCall();
    return status;
}

} // namespace zent
