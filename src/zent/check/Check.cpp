#include "zent/check/Check.h"

#include "zent/check/CheckCall.h"
#include "zent/check/readManifest.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <nlohmann/json.hpp>

#include <maya/MGlobal.h>

#include <exception>
#include <filesystem>
#include <fstream>
#include <utility>

namespace zent {

MString ZentCheck::name("ZentCheck");
Registry ZentCheck::sProxies;

void* ZentCheck::creator() {
    initProxies();
    return new ZentCheck;
}

MSyntax ZentCheck::createSyntax() {
    MSyntax syntax;
    addCheckSyntax(syntax);
    return syntax;
}

MStatus ZentCheck::doIt(const MArgList& args) {
    reset();
    const MArgDatabase database(syntax(), args);
    MString path;
    database.getCommandArgument(0, path);
    std::ifstream file(path.asChar());
    std::error_code ignored;
    if (!file.is_open() || std::filesystem::is_directory(path.asChar(), ignored)) {
        MGlobal::displayError(MString("cannot open file ") + path);
        return MStatus::kFailure;
    }
    try {
        Manifest manifest(file);
        MString resourcePath;
        database.getCommandArgument(1, resourcePath);
        Element::storage().load(toStd(resourcePath));
        readCheckFlags(database, settings_);
        MayaProgress progress(manifest.size());
        Run run(sProxies, settings_, mayaDisplay(&progress));
        manifest.forEach([&run](json&& record) { return run.next(std::move(record)); });
        setResult(run.end());
    } catch (const std::exception& error) {
        MGlobal::displayError(error.what());
        teardown();
        return MStatus::kFailure;
    }
    teardown();
    return MStatus::kSuccess;
}

bool ZentCheck::check(json manifest) {
    return Run(sProxies, settings_, mayaDisplay()).check(std::move(manifest));
}

unsigned ZentCheck::checkSingle(json record) {
    return Run(sProxies, settings_, mayaDisplay()).checkSingle(std::move(record));
}

void ZentCheck::addProxy(std::unique_ptr<Proxy> proxy) {
    std::string key = proxy->name();
    sProxies[std::move(key)] = std::move(proxy);
}

void ZentCheck::initProxies() {
    if (!sProxies.empty()) {
        return;
    }
    for (std::unique_ptr<Proxy>& proxy : makeProxies()) {
        addProxy(std::move(proxy));
    }
}

void ZentCheck::reset() {
    std::set<std::string> skip = std::move(settings_.skip);
    settings_ = RunSettings();
    settings_.skip = std::move(skip);
    namescope.clear();
}

void ZentCheck::teardown() {
    endCheckCall();
}

} // namespace zent
