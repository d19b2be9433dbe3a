#include "zent/tools/Report.h"

#include "zent/check/Check.h"
#include "zent/check/CheckCall.h"
#include "zent/check/readManifest.h"
#include "zent/tools/Chain.h"
#include "zent/tools/ReportCall.h"
#include "zent/tools/ReportObserver.h"
#include "zent/values/Log.h"
#include "zent/values/Port.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <maya/MAnimControl.h>
#include <maya/MFileIO.h>
#include <maya/MGlobal.h>
#include <maya/MTime.h>

#include <array>
#include <cctype>
#include <chrono>
#include <cmath>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zent {

namespace {

constexpr Flag kResults{"rs", "results", MSyntax::kString};
constexpr Flag kWarn{"w", "warn", MSyntax::kDouble};
constexpr Flag kRelative{"r", "relative", MSyntax::kDouble};
constexpr Flag kPoints{"p", "points", MSyntax::kUnsigned};
constexpr Flag kChain{"ch", "chain", MSyntax::kBoolean};

std::vector<Flag> allFlags() {
    std::vector<Flag> flags = checkFlags();
    flags.insert(flags.end(), {kResults, kWarn, kRelative, kPoints, kChain});
    return flags;
}

template <class T>
json valueOf(const MArgDatabase& database, const Flag& flag) {
    T value{};
    database.getFlagArgument(flag.shortName, 0, value);
    return value;
}

/// The flags of a call, by their long names.
json givenFlags(const MArgDatabase& database) {
    json given = json::object();
    for (const Flag& flag : allFlags()) {
        if (!database.isFlagSet(flag.shortName)) {
            continue;
        }
        MString text;
        switch (flag.type) {
        case MSyntax::kBoolean:
            given[flag.longName] = valueOf<bool>(database, flag);
            break;
        case MSyntax::kUnsigned:
            given[flag.longName] = valueOf<unsigned int>(database, flag);
            break;
        case MSyntax::kDouble:
            given[flag.longName] = valueOf<double>(database, flag);
            break;
        default:
            database.getFlagArgument(flag.shortName, 0, text);
            given[flag.longName] = toStd(text);
        }
    }
    return given;
}

double numberOf(const MArgDatabase& database, const Flag& flag) {
    double value = std::nan("");
    database.getFlagArgument(flag.shortName, 0, value);
    if (!(value >= 0.0) || std::isinf(value)) {
        throw std::runtime_error(std::string("flag ") + flag.longName + " should be a number from 0 on");
    }
    return value;
}

json nullIfEmpty(const std::string& text) {
    return text.empty() ? json() : json(text);
}

std::string utcNow() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

std::string header(const ReportCall& call, std::size_t records) {
    const std::string version = toStd(MGlobal::mayaVersion());
    const bool isMaya = !version.empty() && std::isdigit(static_cast<unsigned char>(version.front())) != 0;
    return nlohmann::ordered_json{{"format", "zent-results"},
                                  {"version", 1},
                                  {"program", "ZentMayaTools " ZENT_VERSION},
                                  {"host", isMaya ? "Maya " + version : version},
                                  {"manifest", call.manifest},
                                  {"resource", nullIfEmpty(call.resource)},
                                  {"scene", nullIfEmpty(toStd(MFileIO::currentFile()))},
                                  {"frame", MAnimControl::currentTime().value()},
                                  {"time", utcNow()},
                                  {"records", records},
                                  {"tolerance", std::stod(fmt::format("{}", call.run.epsilon))},
                                  {"warn", std::isinf(call.report.warn) ? json() : json(call.report.warn)},
                                  {"relative", call.report.tolerance.relative},
                                  {"flags", call.flags}}
        .dump(-1, ' ', false, json::error_handler_t::replace);
}

/// The run: its summary.
json run(const ReportCall& call, Manifest& manifest, ResultsWriter& writer) {
    const auto start = ReportObserver::Clock::now();
    const std::size_t records = manifest.size();
    openResults(call, records, writer);
    std::optional<Chain> chain;
    json all(json::value_t::array); // a chained run needs all records before the first one
    if (call.isChained) {
        manifest.forEach([&all](json&& record) {
            all.push_back(std::move(record));
            return true;
        });
        chain.emplace(all, call.run, call.report.tolerance);
    }
    ReportObserver observer(call.report, writer, chain ? &*chain : nullptr);
    MayaProgress progress(records);
    Run checks(ZentCheck::sProxies, call.run, mayaDisplay(&progress), &observer);
    const auto next = [&checks](json&& record) { return checks.next(std::move(record)); };
    if (chain) {
        for (json& record : all) {
            if (!next(std::move(record))) {
                break;
            }
        }
    } else {
        manifest.forEach(next);
    }
    checks.end();
    const std::chrono::duration<double> duration = ReportObserver::Clock::now() - start;
    json summary = observer.summary().json(observer.records() < records, duration.count());
    if (chain) {
        summary["chain"] = chain->summary();
        for (const std::string& line : chain->lines()) {
            Log::println("chain: " + line);
        }
    }
    writer.write(resultsLine({{"summary", summary}}));
    return summary;
}

} // namespace

ReportCall::ReportCall(std::string manifestPath, std::string resourcePath)
    : manifest(std::move(manifestPath)), resource(std::move(resourcePath)) {
    run.ignoreDeformer = false;
    run.stopOnFirstError = false;
}

void readReportFlags(const MArgDatabase& database, ReportCall& call) {
    if (database.isFlagSet(kResults.shortName)) {
        MString text;
        database.getFlagArgument(kResults.shortName, 0, text);
        call.results = toStd(text);
    }
    if (database.isFlagSet(kWarn.shortName)) {
        call.report.warn = numberOf(database, kWarn);
    }
    if (database.isFlagSet(kRelative.shortName)) {
        call.report.tolerance.relative = numberOf(database, kRelative);
    }
    if (database.isFlagSet(kPoints.shortName)) {
        unsigned int points = 0;
        database.getFlagArgument(kPoints.shortName, 0, points);
        call.report.mostPoints = points;
    }
    call.isChained = database.isFlagSet(kChain.shortName) && valueOf<bool>(database, kChain);
    call.report.tolerance.epsilon = call.run.epsilon;
    call.flags = givenFlags(database);
}

// A results file in place of one that the run reads would end both.
void openResults(const ReportCall& call, std::size_t records, ResultsWriter& writer) {
    if (call.results.empty()) {
        return;
    }
    for (const std::string& input : {call.manifest, call.resource}) {
        std::error_code ignored;
        if (!input.empty() && std::filesystem::equivalent(call.results, input, ignored)) {
            throw std::runtime_error("results file " + call.results + " would overwrite " + input);
        }
    }
    writer.open(call.results);
    writer.write(header(call, records));
}

std::string resultsLine(const json& value) {
    return withNamedNumbers(value).dump(-1, ' ', false, json::error_handler_t::replace);
}

void* ZentReport::creator() {
    ZentCheck::initProxies();
    return new ZentReport;
}

MSyntax ZentReport::createSyntax() {
    MSyntax syntax;
    syntax.addArg(MSyntax::kString);
    syntax.addArg(MSyntax::kString);
    for (const Flag& flag : allFlags()) {
        syntax.addFlag(flag.shortName, flag.longName, flag.type);
    }
    return syntax;
}

MStatus ZentReport::doIt(const MArgList& args) {
    namescope.clear();
    const MArgDatabase database(syntax(), args);
    MString path;
    MString resource;
    database.getCommandArgument(0, path);
    database.getCommandArgument(1, resource);
    std::ifstream file(path.asChar());
    if (!file.is_open()) {
        MGlobal::displayError(MString("cannot open file ") + path);
        return MStatus::kFailure;
    }
    MStatus status = MStatus::kSuccess;
    try {
        ReportCall call(toStd(path), toStd(resource));
        Manifest manifest(file);
        Element::storage().load(call.resource);
        readCheckFlags(database, call.run);
        readReportFlags(database, call);
        ResultsWriter writer;
        setResult(toMaya(resultsLine(run(call, manifest, writer))));
        if (!writer.close()) {
            throw std::runtime_error(writer.problem());
        }
    } catch (const std::exception& error) {
        MGlobal::displayError(toMaya(error.what()));
        status = MStatus::kFailure;
    }
    endCheckCall();
    return status;
}

} // namespace zent
