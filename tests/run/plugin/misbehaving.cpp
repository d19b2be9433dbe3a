// A plug-in whose ZentReport does, after the report, what the manifest's name says: what a batch must stand.
#define MNoVersionString
#define MNoPluginEntry
#include "zent/tools/Report.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MString.h>

#include <sys/types.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#define ZENT_EXPORT __attribute__((visibility("default")))

ZENT_EXPORT extern char MApiVersion[];
char MApiVersion[] = "20190100";

ZENT_EXPORT MStatus initializePlugin(MObject object);
ZENT_EXPORT MStatus uninitializePlugin(MObject object);

namespace {

/// The report's last line goes, and half of the one before.
void cut(const std::string& results) {
    std::ifstream file(results);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    std::uintmax_t size = 0;
    for (std::size_t i = 0; i + 2 < lines.size(); ++i) {
        size += lines[i].size() + 1;
    }
    std::filesystem::resize_file(results, size + lines[lines.size() - 2].size() / 2);
}

void takeMemory() {
    for (std::vector<std::vector<char>> all;;) {
        all.emplace_back(std::size_t{1} << 20, 'x');
    }
}

[[noreturn]] void hang() {
    for (;;) {
        pause();
    }
}

class Misbehaving : public zent::ZentReport {
public:
    static void* creator() {
        delete static_cast<ZentReport*>(ZentReport::creator()); // fills the registry
        return new Misbehaving;
    }

    MStatus doIt(const MArgList& args) override {
        const MArgDatabase database(syntax(), args);
        MString path;
        MString results;
        database.getCommandArgument(0, path);
        database.getFlagArgument("results", 0, results);
        const MStatus status = ZentReport::doIt(args);
        const std::string name = std::filesystem::path(path.asChar()).stem().string();
        if (name == "full") {
            cut(results.asChar());
            MGlobal::displayError(MString("cannot write results file ") + results + ": No space left on device");
            return MStatus::kFailure;
        }
        const bool isKilled =
            name == "killed" || (name == "killedOnce" && std::filesystem::remove(std::string(path.asChar()) + ".mark"));
        if (isKilled || name == "crash" || name == "memory" || name == "hang") {
            cut(results.asChar());
        }
        if (isKilled) {
            raise(SIGKILL);
        } else if (name == "crash") {
            raise(SIGABRT);
        } else if (name == "memory") {
            takeMemory();
        } else if (name == "hang") {
            hang();
        } else if (name == "interrupt" || name == "interruptTwice") {
            kill(getppid(), SIGINT);
        }
        if (name == "interruptTwice") {
            kill(getppid(), SIGTERM);
            hang();
        }
        return status;
    }
};

} // namespace

MStatus initializePlugin(MObject object) {
    return MFnPlugin(object, "Unknown", "1", "Any")
        .registerCommand(zent::ZentReport::kName, Misbehaving::creator, zent::ZentReport::createSyntax);
}

MStatus uninitializePlugin(MObject object) {
    return MFnPlugin(object, "Unknown", "1", "Any").deregisterCommand(zent::ZentReport::kName);
}
