#include "zent/check/CheckCall.h"

#include "zent/values/Log.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <limits>

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

const std::vector<Flag>& checkFlags() {
    static const std::vector<Flag> flags{kNamespace, kOutputDirectory, kVerbose, kIgnoreDeformer, kStopOnFirstError,
                                         kSkip,      kEpsilon};
    return flags;
}

void addCheckSyntax(MSyntax& syntax) {
    syntax.addArg(MSyntax::kString);
    syntax.addArg(MSyntax::kString);
    for (const Flag& flag : checkFlags()) {
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

MayaProgress::MayaProgress(std::size_t records) {
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    computation_.beginComputation(true, false);
    computation_.setProgressRange(0, static_cast<int>(std::min(records, kMost)));
}

MayaProgress::~MayaProgress() {
    computation_.endComputation();
}

void MayaProgress::beginRecord(const std::string& node, const std::string& method) {
    constexpr auto kInterval = std::chrono::milliseconds(20); // drawing takes time
    node_ = &node;
    method_ = &method;
    ++record_;
    if (Clock::now() - shown_ > kInterval) {
        show();
    }
}

void MayaProgress::beginPoints() {
    show();
}

void MayaProgress::show() {
    computation_.setProgressStatus(toMaya(*node_ + "(" + *method_ + ")"));
    computation_.setProgress(record_);
    shown_ = Clock::now();
}

Display mayaDisplay(RunProgress* progress) {
    return {[](const std::string& line) { MGlobal::displayInfo(toMaya(line)); },
            [](const std::string& line) { MGlobal::displayWarning(toMaya(line)); },
            [](const std::string& line) { MGlobal::displayError(toMaya(line)); }, progress};
}

void endCheckCall() {
    Log::close();
    Element::storage().loaded = false;
}

} // namespace zent
