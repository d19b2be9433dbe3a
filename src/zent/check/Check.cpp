#include "zent/check/Check.h"

#include "zent/check/Run.h"
#include "zent/values/Log.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <nlohmann/json.hpp>

#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <array>
#include <exception>
#include <fstream>

namespace zent {

namespace {

unsigned int verbose = 0;

struct Flag {
    const char* shortName;
    const char* longName;
    MSyntax::MArgType type;
};

constexpr Flag kNamespace{"ns", "namespace", MSyntax::kString};
constexpr Flag kOutputDirectory{"od", "outputDirectory", MSyntax::kString};
constexpr Flag kVerbose{"v", "verbose", MSyntax::kUnsigned};
constexpr Flag kIgnoreDeformer{"id", "ignoreDeformer", MSyntax::kBoolean};
constexpr Flag kStopOnFirstError{"x", "stopOnFirstError", MSyntax::kBoolean};
constexpr Flag kSkip{"s", "skip", MSyntax::kString};
constexpr Flag kEpsilon{"e", "epsilon", MSyntax::kDouble};

std::string toStd(const MString& text) {
    return std::string(text.asChar(), text.length());
}

/// Parsing from one buffer takes half the time of parsing from the stream.
json parseManifest(std::ifstream& file) {
    std::string text;
    std::array<char, 1U << 16> chunk{};
    while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0) {
        text.append(chunk.data(), static_cast<std::size_t>(file.gcount()));
    }
    return json::parse(text, nullptr, true, false);
}

Display mayaDisplay() {
    return {[](const std::string& line) { MGlobal::displayInfo(toMaya(line)); },
            [](const std::string& line) { MGlobal::displayWarning(toMaya(line)); },
            [](const std::string& line) { MGlobal::displayError(toMaya(line)); }};
}

} // namespace

MString ZentCheck::name("ZentCheck");
Registry ZentCheck::sProxies;

void* ZentCheck::creator() {
    initProxies();
    return new ZentCheck;
}

MSyntax ZentCheck::createSyntax() {
    MSyntax syntax;
    syntax.addArg(MSyntax::kString);
    syntax.addArg(MSyntax::kString);
    for (const Flag& flag :
         {kNamespace, kOutputDirectory, kVerbose, kIgnoreDeformer, kStopOnFirstError, kSkip, kEpsilon}) {
        syntax.addFlag(flag.shortName, flag.longName, flag.type);
    }
    return syntax;
}

MStatus ZentCheck::doIt(const MArgList& args) {
    reset();
    const MArgDatabase database(syntax(), args);
    MString path;
    database.getCommandArgument(0, path);
    std::ifstream file(path.asChar());
    if (!file.is_open()) {
        MGlobal::displayError(MString("cannot open file ") + path);
        return MStatus::kFailure;
    }
    try {
        json manifest = parseManifest(file);
        MString resourcePath;
        database.getCommandArgument(1, resourcePath);
        Element::storage().load(toStd(resourcePath));
        readFlags(database);
        setResult(check(std::move(manifest)));
    } catch (const std::exception& error) {
        MGlobal::displayError(error.what());
        teardown();
        return MStatus::kFailure;
    }
    teardown();
    return MStatus::kSuccess;
}

void ZentCheck::readFlags(const MArgDatabase& database) {
    MString text;
    if (database.isFlagSet(kNamespace.shortName)) {
        database.getFlagArgument(kNamespace.shortName, 0, text);
        namescope = toStd(text);
    }
    if (database.isFlagSet(kOutputDirectory.shortName)) {
        database.getFlagArgument(kOutputDirectory.shortName, 0, text);
        Log::init(toStd(text), "ZentCheckLog");
    } else {
        Log::setCustomPrintln([](const std::string& line) { MGlobal::displayInfo(toMaya(line)); });
    }
    if (database.isFlagSet(kVerbose.shortName)) {
        database.getFlagArgument(kVerbose.shortName, 0, verbose);
    }
    if (database.isFlagSet(kIgnoreDeformer.shortName)) {
        database.getFlagArgument(kIgnoreDeformer.shortName, 0, ignoreDeformer);
    }
    if (database.isFlagSet(kStopOnFirstError.shortName)) {
        database.getFlagArgument(kStopOnFirstError.shortName, 0, stopOnFirstError);
    }
    if (database.isFlagSet(kEpsilon.shortName)) {
        double value = 0.0;
        database.getFlagArgument(kEpsilon.shortName, 0, value);
        epsilon = static_cast<float>(value);
    }
    if (database.isFlagSet(kSkip.longName)) {
        database.getFlagArgument(kSkip.longName, 0, text);
        MStringArray methods;
        text.split(';', methods);
        for (unsigned int i = 0; i < methods.length(); ++i) {
            skip.insert(toStd(methods[i]));
        }
    }
}

Run ZentCheck::run() const {
    return {sProxies, {ignoreDeformer, stopOnFirstError, epsilon, verbose, skip}, mayaDisplay()};
}

bool ZentCheck::check(json manifest) {
    return run().check(std::move(manifest));
}

unsigned ZentCheck::checkSingle(json record) {
    return run().checkSingle(std::move(record));
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
    ignoreDeformer = true;
    stopOnFirstError = true;
    epsilon = 0.001f;
    namescope.clear();
    verbose = 0;
}

void ZentCheck::teardown() {
    Log::close();
    Element::storage().loaded = false;
}

} // namespace zent
