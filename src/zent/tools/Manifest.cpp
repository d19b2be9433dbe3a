#include "zent/tools/Manifest.h"

#include "zent/check/CheckCall.h"
#include "zent/methods/Exporter.h"
#include "zent/methods/WholeFiles.h"
#include "zent/tools/flags.h"
#include "zent/tools/Snapshot.h"
#include "zent/values/Select.h"

#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>

#include <exception>
#include <sstream>

namespace zent {

namespace {

constexpr Flag kOutput{"o", "output", MSyntax::kString};
constexpr Flag kResource{"r", "resource", MSyntax::kString};
constexpr Flag kNotes{"n", "notes", MSyntax::kString};
constexpr Flag kSnapshot{"sn", "snapshot", MSyntax::kString};
constexpr Flag kNamespace{"ns", "namespace", MSyntax::kString};
constexpr Flag kSkip{"s", "skip", MSyntax::kString};
constexpr Flag kMethods{"m", "methods", MSyntax::kString};
constexpr const char* kSelected = "-selected";
constexpr const char* kHistory = "-history";

std::set<std::string> methodsOf(const MArgDatabase& database, const Flag& flag) {
    std::set<std::string> methods;
    std::istringstream list(flagText(database, flag));
    for (std::string method; std::getline(list, method, ';');) {
        if (!method.empty()) {
            methods.insert(method);
        }
    }
    return methods;
}

/// As many as an export without a selection comes to.
std::size_t nodeCount() {
    std::size_t count = 0;
    for (MItDependencyNodes nodes; !nodes.isDone(); nodes.next()) {
        ++count;
    }
    return count;
}

} // namespace

void* ZentManifest::creator() {
    return new ZentManifest;
}

MSyntax ZentManifest::createSyntax() {
    MSyntax syntax;
    for (const Flag& flag : {kOutput, kResource, kNotes, kSnapshot, kNamespace, kSkip, kMethods}) {
        syntax.addFlag(flag.shortName, flag.longName, flag.type);
    }
    syntax.addFlag("-sl", kSelected);
    syntax.addFlag("-hi", kHistory);
    return syntax;
}

MStatus ZentManifest::doIt(const MArgList& args) {
    const MArgDatabase database(syntax(), args);
    ExportSettings settings;
    settings.manifest = flagText(database, kOutput);
    settings.resource = flagText(database, kResource);
    settings.notes = flagText(database, kNotes);
    settings.onlySelected = database.isFlagSet(kSelected);
    settings.withHistory = database.isFlagSet(kHistory);
    settings.nameSpace = flagText(database, kNamespace);
    settings.skip = methodsOf(database, kSkip);
    settings.only = methodsOf(database, kMethods);
    if (settings.manifest.empty() || settings.resource.empty()) {
        MGlobal::displayError("-output MANIFEST and -resource RESOURCE are needed");
        return MStatus::kFailure;
    }
    MStatus status;
    try {
        WholeFiles files({openScene()});
        MayaProgress progress(nodeCount());
        settings.progress = &progress;
        const ExportOutcome outcome = exportManifest(settings, files);
        if (const std::string scene = flagText(database, kSnapshot); !scene.empty()) {
            namescope = settings.nameSpace;
            addSnapshot(nlohmann::json::parse(outcome.manifest), scene, files);
        }
        files.put();
        setResult(toMaya(outcome.notes));
    } catch (const std::exception& error) {
        MGlobal::displayError(toMaya(error.what()));
        status = MStatus::kFailure;
    }
    namescope.clear();
    return status;
}

} // namespace zent
