#include "zentcheck/runBatch.h"

#include "batch/Batch.h"
#include "maya/Commands.h"
#include "maya/Display.h"
#include "maya/Scene.h"
#include "maya/Session.h"
#include "scene/sceneFile.h"
#include "zent/results/Outcome.h"
#include "zentcheck/CommandFlags.h"
#include "zentcheck/Plugin.h"
#include "zentcheck/Reports.h"
#include "zentcheck/Summary.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <utility>

namespace host {

namespace {

using nlohmann::json;
using State = batch::CheckEnd::State;

constexpr int kInterrupted = 128; // and the signal, as a shell has it

/// The records of all checks, and the worst of them.
struct Totals {
    std::uint64_t records = 0;
    std::array<std::uint64_t, zent::kOutcomeNames.size()> outcomes{};
};

/// The options of one check.
Options optionsOf(const Options& batch, const batch::Check& check) {
    Options options = batch;
    options.manifest = check.manifest;
    options.resource = check.resource;
    options.flags = check.flags;
    return options;
}

/// The flags of the batch, and what a check's entry in the list says instead.
void completeFlags(const Options& batch, batch::Check& check) {
    Options options = batch;
    for (std::size_t i = 0; i + 1 < check.flags.size(); i += 2) {
        options.setFlag(check.flags[i], check.flags[i + 1]);
    }
    check.flags = options.flags;
}

/// In a worker. The first error that is told is the one that ended it.
std::string checkInWorker(const Options& batch, const batch::Check& check, const std::string& results) {
    std::string error;
    setDisplay({{}, {}, [&error](const std::string& text) { error = error.empty() ? text : error; }});
    const Options options = optionsOf(batch, check);
    if (!check.scene.empty()) {
        scene::readSceneFile(check.scene, options.geometryFile(), scene::Scene::current());
        setSceneFile(check.scene);
    }
    std::string folder = options.logFolder();
    if (!folder.empty()) {
        folder = (std::filesystem::path(folder) / batch::ResultsFolder::fileName(check.name)).string();
        std::filesystem::create_directories(folder);
        std::filesystem::remove(std::filesystem::path(folder) / "ZentCheckLog.txt");
    }
    std::vector<std::string> words = options.commandWords(folder);
    words.insert(words.end(), {"-results", results});
    const CommandOutcome outcome = runCommand("ZentReport", words);
    if (!outcome.problem.empty()) {
        return outcome.problem;
    }
    return !outcome.status.error() ? "" : error.empty() ? "the run failed" : error;
}

/// What the entry of a list came to, by the summary of its results.
batch::CheckEnd judge(const json& summaryJson, const Options& options, Totals& totals) {
    batch::CheckEnd end;
    try {
        const Summary summary = readSummary(summaryJson, options);
        for (std::size_t i = 0; i < zent::kOutcomeNames.size(); ++i) {
            totals.outcomes[i] += summaryJson.at(zent::kOutcomeNames[i]).get<std::uint64_t>();
        }
        end.records = summaryJson.at("records").get<std::uint64_t>();
        totals.records += end.records;
        const bool isLax = options.isStrict && !summary.problems.empty();
        end.state = summary.hasError || isLax ? State::failed : summary.hasMismatch ? State::mismatch : State::match;
        if (end.state != State::match) {
            end.text = summary.line + (isLax ? "; --strict: " + summary.problems.front() : "");
        }
    } catch (const std::exception& error) {
        end.state = State::failed;
        end.text = std::string("its summary cannot be read: ") + error.what();
    }
    return end;
}

std::string progressText(const batch::BatchProgress& progress) {
    std::string text = fmt::format("{} of {} checks", progress.done, progress.checks);
    if (progress.mismatched > 0) {
        text += fmt::format(", {} mismatched", progress.mismatched);
    }
    if (progress.failed > 0) {
        text += fmt::format(", {} failed", progress.failed);
    }
    return progress.secondsLeft < 0.0 ? text : text + fmt::format(", {:.0f} s left", progress.secondsLeft);
}

std::string summaryOf(const batch::Batch& batch, const Totals& totals, std::size_t problems) {
    std::array<std::size_t, 4> states{};
    for (const batch::CheckEnd& end : batch.ends()) {
        ++states.at(static_cast<std::size_t>(end.state));
    }
    const auto count = [&states](State state) { return states.at(static_cast<std::size_t>(state)); };
    std::string line = fmt::format("{} checks: {} match, {} mismatch, {} failed", batch.checks().size() + problems,
                                   count(State::match), count(State::mismatch), count(State::failed) + problems);
    line += count(State::waiting) == 0 ? "" : fmt::format(", {} not run", count(State::waiting));
    line += fmt::format("; {} records: {}", totals.records, [&totals] {
        std::string text;
        for (std::size_t i = 0; i < zent::kOutcomeNames.size(); ++i) {
            text += fmt::format("{}{} {}", i == 0 ? "" : ", ", totals.outcomes[i], zent::kOutcomeNames[i]);
        }
        return text;
    }());
    if (batch.peakKilobytes() > 0) {
        line += fmt::format("; {:.1f} s of processors, at most {} MB (of {})", batch.cpuSeconds(),
                            (batch.peakKilobytes() + 1023) / 1024, batch::ResultsFolder::fileName(batch.peakName()));
    }
    return line;
}

/// The page and the JUnit XML of all results that are there.
void writeReports(const Options& options, const batch::Batch& batch) {
    if (options.junit.empty() && options.page.empty()) {
        return;
    }
    report::Report report(options.junit, options.page);
    for (std::size_t i = 0; i < batch.checks().size(); ++i) {
        if (batch.ends()[i].state != State::waiting) {
            report.read(batch.folder().file(batch.checks()[i].name), batch.checks()[i].name);
        }
    }
    report.write();
}

/// The checks that are this process's part.
std::vector<batch::Check> shardOf(std::vector<batch::Check>&& checks, const Shard& shard) {
    const auto isOthers = [&shard](const batch::Check& check) {
        return !batch::isInShard(check.name, shard.part, shard.parts);
    };
    checks.erase(std::remove_if(checks.begin(), checks.end(), isOthers), checks.end());
    return std::move(checks);
}

} // namespace

int runBatch(const Options& options, Terminal& terminal) {
    batch::Checks list = batch::readChecks(options.batch);
    for (const std::string& problem : list.problems) {
        terminal.error(problem);
    }
    for (batch::Check& check : list.checks) {
        completeFlags(options, check);
    }
    Totals totals;
    batch::Batch batch(shardOf(std::move(list.checks), options.shard), options.results,
                       [&](const json& summary) { return judge(summary, options, totals); });
    if (options.resume) {
        batch.resume();
    }
    {
        const Plugin plugin(options.plugin ? *options.plugin : Plugin::defaultPath("ZentMayaTools"));
        batch.run(
            options.jobs.value_or(batch::usableProcessors()), options.limits,
            [&options](const batch::Check& check, const std::string& results) {
                return checkInWorker(options, check, results);
            },
            [&terminal](const batch::BatchProgress& progress) { terminal.progress(progressText(progress)); });
    }
    for (std::size_t i = 0; i < batch.ends().size(); ++i) {
        if (const batch::CheckEnd& end = batch.ends()[i]; !end.text.empty()) {
            terminal.info(fmt::format("{} {}: {}", end.state == State::failed ? "failed" : "mismatch",
                                      batch::ResultsFolder::fileName(batch.checks()[i].name), end.text));
        }
    }
    if (!batch.problem().empty()) {
        terminal.error(batch.problem() + "; no more checks were started");
    }
    writeReports(options, batch);
    terminal.setSummary(summaryOf(batch, totals, list.problems.size()), {});
    const batch::BatchProgress progress = batch.progress();
    return batch.interrupt() != 0 ? kInterrupted + batch.interrupt()
           : progress.failed > 0 || progress.done < progress.checks || !list.problems.empty() ? 2
           : progress.mismatched > 0                                                          ? 1
                                                                                              : 0;
}

} // namespace host
