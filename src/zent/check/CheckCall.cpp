#include "zent/check/CheckCall.h"

#include "zent/values/Log.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

namespace zent {

namespace {

constexpr Flag kNamespace{"ns", "namespace", MSyntax::kString};
constexpr Flag kOutputDirectory{"od", "outputDirectory", MSyntax::kString};
constexpr Flag kVerbose{"v", "verbose", MSyntax::kUnsigned};
constexpr Flag kIgnoreDeformer{"id", "ignoreDeformer", MSyntax::kBoolean};
constexpr Flag kStopOnFirstError{"x", "stopOnFirstError", MSyntax::kBoolean};
constexpr Flag kSkip{"s", "skip", MSyntax::kString};
constexpr Flag kEpsilon{"e", "epsilon", MSyntax::kDouble};

} // namespace

std::string toStd(const MString& text) {
    return std::string(text.asChar(), text.length());
}

void addCheckSyntax(MSyntax& syntax) {
    syntax.addArg(MSyntax::kString);
    syntax.addArg(MSyntax::kString);
    for (const Flag& flag :
         {kNamespace, kOutputDirectory, kVerbose, kIgnoreDeformer, kStopOnFirstError, kSkip, kEpsilon}) {
        syntax.addFlag(flag.shortName, flag.longName, flag.type);
    }
}

void readCheckFlags(const MArgDatabase& database, RunSettings& settings) {
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
        database.getFlagArgument(kVerbose.shortName, 0, settings.verbose);
    }
    if (database.isFlagSet(kIgnoreDeformer.shortName)) {
        database.getFlagArgument(kIgnoreDeformer.shortName, 0, settings.ignoreDeformer);
    }
    if (database.isFlagSet(kStopOnFirstError.shortName)) {
        database.getFlagArgument(kStopOnFirstError.shortName, 0, settings.stopOnFirstError);
    }
    if (database.isFlagSet(kEpsilon.shortName)) {
        double value = 0.0;
        database.getFlagArgument(kEpsilon.shortName, 0, value);
        settings.epsilon = static_cast<float>(value);
    }
    if (database.isFlagSet(kSkip.longName)) {
        database.getFlagArgument(kSkip.longName, 0, text);
        MStringArray methods;
        text.split(';', methods);
        for (unsigned int i = 0; i < methods.length(); ++i) {
            settings.skip.insert(toStd(methods[i]));
        }
    }
}

Display mayaDisplay() {
    return {[](const std::string& line) { MGlobal::displayInfo(toMaya(line)); },
            [](const std::string& line) { MGlobal::displayWarning(toMaya(line)); },
            [](const std::string& line) { MGlobal::displayError(toMaya(line)); }};
}

void endCheckCall() {
    Log::close();
    Element::storage().loaded = false;
}

} // namespace zent
