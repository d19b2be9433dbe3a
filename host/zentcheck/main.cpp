// zentcheck: does from a terminal what Maya does with the plug-in. It opens a scene, loads the plug-in, runs its
// command, shows what the command has to say, and takes the plug-in down.
#include "maya/Commands.h"
#include "maya/Display.h"
#include "maya/Scene.h"
#include "maya/Session.h"
#include "scene/sceneFile.h"
#include "tools/CompileExpression.h"
#include "tools/Disassemble.h"
#include "tools/ListResources.h"
#include "zent/methods/Lint.h"
#include "zent/methods/listMethods.h"
#include "zent/values/Select.h"
#include "zentcheck/Options.h"
#include "zentcheck/Plugin.h"
#include "zentcheck/Reports.h"
#include "zentcheck/runBatch.h"
#include "zentcheck/runJobs.h"
#include "zentcheck/Summary.h"
#include "zentcheck/Terminal.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

namespace {

enum Status { kMatched = 0, kMismatched = 1, kFailed = 2 };

host::CommandOutcome runCommand(const host::Options& options, const std::string& plugin, const std::string& command,
                                const std::vector<std::string>& words) {
    const host::Plugin loaded(options.plugin ? *options.plugin : host::Plugin::defaultPath(plugin));
    host::CommandOutcome outcome = host::runCommand(command, words);
    if (!outcome.problem.empty()) {
        throw std::runtime_error(outcome.problem);
    }
    return outcome;
}

/// The command of a check, in this process or by workers.
host::CommandOutcome runCheckCommand(const host::Options& options, host::Terminal& terminal, bool isReport,
                                     const std::vector<std::string>& words) {
    return options.jobs ? host::runJobs(*options.jobs, isReport, words, terminal)
           : isReport   ? runCommand(options, "ZentMayaTools", "ZentReport", words)
                        : runCommand(options, "ZentMayaNodes", "ZentCheck", words);
}

/// A run with nothing to report writes no log, and an earlier run's would seem to be its own.
void removeLog(const std::string& folder) {
    if (!folder.empty()) {
        std::error_code ignored;
        std::filesystem::remove(std::filesystem::path(folder) / "ZentCheckLog.txt", ignored);
    }
}

void openScene(const host::Options& options, const std::string& file) {
    try {
        scene::readSceneFile(file, options.geometryFile(), scene::Scene::current());
    } catch (const std::runtime_error& error) {
        const std::string text = error.what();
        if (!options.sceneResource.empty() || text.find("resource") == std::string::npos) {
            throw;
        }
        throw std::runtime_error(text +
                                 " (where the scene's geometry lies in a file of its own, --scene-resource names it)");
    }
    host::setSceneFile(file);
}

const char* inWords(Status status) {
    return status == kMatched ? "all records that ran matched" : status == kMismatched ? "mismatch" : "the run failed";
}

Status checkScene(const host::Options& options, host::Terminal& terminal, const std::string& logFolder) {
    removeLog(logFolder);
    const host::CommandOutcome outcome = runCheckCommand(options, terminal, false, options.commandWords(logFolder));
    const bool* matched = std::get_if<bool>(&outcome.result);
    return outcome.status.error() || matched == nullptr ? kFailed : *matched ? kMatched : kMismatched;
}

std::string frameOf(const scene::Scene& scene) {
    return fmt::format("frame {}", scene.time().as(MTime::kFilm));
}

/// One scene after the other, each told with its frame and what it came to; a scene's log has a folder of its own.
/// `check` is called with the scene's file and that folder.
template <class Check>
Status checkScenes(const host::Options& options, host::Terminal& terminal, Check check) {
    Status worst = kMatched;
    scene::Scene& scene = scene::Scene::current();
    std::vector<std::string> lines;
    for (const std::string& file : options.scenes) {
        scene.clear();
        openScene(options, file);
        terminal.info(fmt::format("====== scene {}, {} ======", file, frameOf(scene)));
        std::string folder = options.logFolder();
        if (!folder.empty()) {
            folder = (std::filesystem::path(folder) / std::filesystem::path(file).stem()).string();
            std::filesystem::create_directories(folder);
        }
        const Status status = check(file, folder);
        worst = std::max(worst, status);
        lines.push_back(fmt::format("{}: {}", frameOf(scene), inWords(status)));
    }
    for (const std::string& line : lines) {
        terminal.info(line);
    }
    return worst;
}

Status runCheck(const host::Options& options, host::Terminal& terminal) {
    const Status status = options.scenes.size() > 1 ? checkScenes(options, terminal,
                                                                  [&](const std::string&, const std::string& folder) {
                                                                      return checkScene(options, terminal, folder);
                                                                  })
                                                    : checkScene(options, terminal, options.logFolder());
    terminal.setSummary(inWords(status));
    return status;
}

/// Writes a scene with what the manifest reads.
Status takeSnapshot(const host::Options& options, host::Terminal& terminal) {
    const host::CommandOutcome outcome = runCommand(options, "ZentMayaTools", "ZentSnapshot", options.snapshotWords());
    if (outcome.status.error()) {
        return kFailed;
    }
    terminal.setSummary("written");
    return kMatched;
}

Status runReport(const host::Options& options, host::Terminal& terminal, const std::string& logFolder) {
    removeLog(logFolder);
    std::vector<std::string> words = options.commandWords(logFolder);
    if (options.isChained) {
        words.insert(words.end(), {"-chain", "true"});
    }
    host::Reports reports(options);
    if (!reports.results().empty()) {
        words.insert(words.end(), {"-results", reports.results()});
    }
    const host::CommandOutcome outcome = runCheckCommand(options, terminal, true, words);
    reports.write();
    const std::string* text = std::get_if<std::string>(&outcome.result);
    if (text == nullptr) {
        return kFailed;
    }
    const host::Summary summary = host::readSummary(nlohmann::json::parse(*text), options);
    terminal.setSummary(summary.line, summary.table);
    Status status = summary.hasMismatch ? kMismatched : kMatched;
    if (options.isStrict) {
        for (const std::string& problem : summary.problems) {
            terminal.error("--strict: " + problem);
            status = kFailed;
        }
    }
    return outcome.status.error() || summary.hasError ? kFailed : status;
}

/// A results file for each of several scenes: its name has the scene's in it.
Status runReports(const host::Options& options, host::Terminal& terminal) {
    if (options.scenes.size() < 2) {
        return runReport(options, terminal, options.logFolder());
    }
    const Status status = checkScenes(options, terminal, [&](const std::string& file, const std::string& folder) {
        host::Options one = options;
        one.scene = file;
        if (!one.results.empty()) {
            const std::filesystem::path path(one.results);
            const std::string name =
                path.stem().string() + "." + std::filesystem::path(file).stem().string() + path.extension().string();
            one.results = (path.parent_path() / name).string();
        }
        return runReport(one, terminal, folder);
    });
    terminal.setSummary(inWords(status));
    return status;
}

/// Writes a manifest of the scene, and tells the notes.
Status makeManifest(const host::Options& options, host::Terminal& terminal) {
    host::setProgressDisplay([&terminal](const host::Progress& progress) {
        terminal.progress(fmt::format("node {} of {}: {}", progress.amount, progress.greatest, progress.status));
    });
    const host::CommandOutcome outcome = runCommand(options, "ZentMayaTools", "ZentManifest", options.exportWords());
    if (const auto* notes = std::get_if<std::string>(&outcome.result); notes != nullptr) {
        terminal.info(notes->substr(0, notes->find_last_not_of('\n') + 1));
    }
    terminal.setSummary(outcome.status.error() ? "the run failed" : "written");
    return outcome.status.error() ? kFailed : kMatched;
}

Status lintManifest(const host::Options& options) {
    std::ifstream file(options.manifest);
    if (!file.is_open()) {
        throw std::runtime_error("cannot open file " + options.manifest);
    }
    zent::LintSettings settings;
    if (!options.resource.empty()) {
        settings.resource = options.resource;
    }
    if (options.scene) {
        openScene(options, *options.scene);
        settings.hasScene = true;
        zent::namescope = options.flagValue("-namespace");
    }
    const std::vector<zent::Mistake> mistakes = zent::lint(nlohmann::json::parse(file), settings);
    for (const zent::Mistake& mistake : mistakes) {
        std::cout << mistake.inWords() << '\n';
    }
    return mistakes.empty() ? kMatched : kMismatched;
}

/// What the command line asks for instead of a run.
Status runTool(const host::Options& options) {
    Status status = kMatched;
    try {
        if (options.lint) {
            status = lintManifest(options);
        } else if (options.listMethods) {
            options.asJson ? zent::listMethodsAsJson(std::cout) : zent::listMethods(std::cout);
        } else if (!options.listResources.empty()) {
            zent::listResources(options.listResources, std::cout);
        } else if (!options.compileExpression.empty()) {
            zent::printCompiledExpression(options.compileExpression, options.inputs, options.outputs, std::cout);
        } else {
            zent::disassemble(options.disassemble, options.block, options.constants, std::cout);
        }
        if (std::cout.flush()) {
            return status;
        }
        std::cerr << "error: cannot write to standard output\n";
    } catch (const std::length_error&) {
        std::cerr << "error: " << options.toolFile() << " is no resource file: its table has impossible sizes\n";
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << '\n';
    }
    return kFailed;
}

int run(const host::Options& options) {
    host::Terminal terminal(options.isQuiet);
    host::setDisplay({[&terminal](const std::string& line) { terminal.info(line); },
                      [&terminal](const std::string& text) { terminal.warning(text); },
                      [&terminal](const std::string& text) { terminal.error(text); }});
    host::setProgressDisplay([&terminal](const host::Progress& progress) {
        terminal.progress(progress.amount, progress.greatest, progress.status);
    });
    int status = kFailed;
    terminal.setSummary("the run failed");
    try {
        if (options.scenes.size() == 1) {
            openScene(options, *options.scene);
        }
        status = !options.batch.empty()      ? host::runBatch(options, terminal)
                 : options.makeManifest      ? makeManifest(options, terminal)
                 : !options.snapshot.empty() ? takeSnapshot(options, terminal)
                 : options.wantsReport()     ? runReports(options, terminal)
                                             : runCheck(options, terminal);
    } catch (const std::exception& error) {
        terminal.error(error.what());
    }
    host::setDisplay({});
    host::setProgressDisplay({});
    if (!terminal.flush()) {
        terminal.error("cannot write to standard output");
        status = kFailed;
    }
    terminal.end();
    return status;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const host::Options options = host::parseOptions(argc, argv);
        return options.isRun() ? run(options) : runTool(options);
    } catch (const host::UsageExit& usage) {
        std::fputs(usage.out.c_str(), stdout);
        std::fputs(usage.err.c_str(), stderr);
        return usage.status;
    }
}
