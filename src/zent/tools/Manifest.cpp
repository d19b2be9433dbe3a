#include "zent/tools/Manifest.h"

#include "zent/check/CheckCall.h"
#include "zent/methods/Exporter.h"
#include "zent/values/Select.h"

#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>

#include <exception>
#include <sstream>

namespace zent {

namespace {

constexpr const char* kOutput = "-output";
constexpr const char* kResource = "-resource";
constexpr const char* kNotes = "-notes";
constexpr const char* kSelected = "-selected";
constexpr const char* kHistory = "-history";
constexpr const char* kNamespace = "-namespace";
constexpr const char* kSkip = "-skip";
constexpr const char* kMethods = "-methods";

std::string textOf(const MArgDatabase& database, const char* flag) {
    MString text;
    if (database.isFlagSet(flag)) {
        database.getFlagArgument(flag, 0, text);
    }
    return toStd(text);
}

std::set<std::string> methodsOf(const MArgDatabase& database, const char* flag) {
    std::set<std::string> methods;
    std::istringstream list(textOf(database, flag));
    for (std::string method; std::getline(list, method, ';');) {
        if (!method.empty()) {
            methods.insert(method);
        }
    }
    return methods;
}

} // namespace

void* ZentManifest::creator() {
    return new ZentManifest;
}

MSyntax ZentManifest::createSyntax() {
    MSyntax syntax;
    syntax.addFlag("-o", kOutput, MSyntax::kString);
    syntax.addFlag("-r", kResource, MSyntax::kString);
    syntax.addFlag("-n", kNotes, MSyntax::kString);
    syntax.addFlag("-sl", kSelected);
    syntax.addFlag("-hi", kHistory);
    syntax.addFlag("-ns", kNamespace, MSyntax::kString);
    syntax.addFlag("-s", kSkip, MSyntax::kString);
    syntax.addFlag("-m", kMethods, MSyntax::kString);
    return syntax;
}

MStatus ZentManifest::doIt(const MArgList& args) {
    const MArgDatabase database(syntax(), args);
    ExportSettings settings;
    settings.manifest = textOf(database, kOutput);
    settings.resource = textOf(database, kResource);
    settings.notes = textOf(database, kNotes);
    settings.onlySelected = database.isFlagSet(kSelected);
    settings.withHistory = database.isFlagSet(kHistory);
    settings.nameSpace = textOf(database, kNamespace);
    settings.skip = methodsOf(database, kSkip);
    settings.only = methodsOf(database, kMethods);
    if (settings.manifest.empty() || settings.resource.empty()) {
        MGlobal::displayError("-output MANIFEST and -resource RESOURCE are needed");
        return MStatus::kFailure;
    }
    try {
        setResult(toMaya(exportManifest(settings).notes));
    } catch (const std::exception& error) {
        MGlobal::displayError(error.what());
        return MStatus::kFailure;
    }
    return MStatus::kSuccess;
}

} // namespace zent
