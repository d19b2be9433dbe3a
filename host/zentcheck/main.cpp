// zentcheck: does from a terminal what Maya does with the plug-in. It opens a scene, loads the plug-in, runs its
// command, shows what the command has to say, and takes the plug-in down.
#include "maya/Commands.h"
#include "maya/Display.h"
#include "maya/Scene.h"
#include "scene/sceneFile.h"
#include "tools/CompileExpression.h"
#include "tools/Disassemble.h"
#include "tools/ListResources.h"
#include "zent/methods/Lint.h"
#include "zent/methods/listMethods.h"
#include "zent/values/Select.h"
#include "zentcheck/Options.h"
#include "zentcheck/Plugin.h"
#include "zentcheck/Terminal.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace {

enum Status { kMatched = 0, kMismatched = 1, kFailed = 2 };

Status runCheck(const host::Options& options, host::Terminal& terminal) {
    if (options.scene) {
        scene::readSceneFile(*options.scene, options.resource, scene::Scene::current());
    }
    const host::Plugin plugin(options.plugin ? *options.plugin : host::Plugin::defaultPath());
    std::vector<std::string> words = options.commandWords();
    if (terminal.isTerminal() && !options.has("-verbose") && !options.has("-outputDirectory")) {
        words.insert(words.end(), {"-verbose", "1"});
        terminal.hideMarks();
    }
    const host::CommandOutcome outcome = host::runCommand("ZentCheck", words);
    if (!outcome.problem.empty()) {
        throw std::runtime_error(outcome.problem);
    }
    const bool* matched = std::get_if<bool>(&outcome.result);
    if (outcome.status.error() || matched == nullptr) {
        return kFailed;
    }
    return *matched ? kMatched : kMismatched;
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
        scene::readSceneFile(*options.scene, options.resource, scene::Scene::current());
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

Status run(const host::Options& options) {
    host::Terminal terminal;
    host::setDisplay({[&terminal](const std::string& line) { terminal.info(line); },
                      [&terminal](const std::string& text) { terminal.warning(text); },
                      [&terminal](const std::string& text) { terminal.error(text); }});
    Status status = kFailed;
    try {
        status = runCheck(options, terminal);
    } catch (const std::exception& error) {
        terminal.error(error.what());
    }
    host::setDisplay({});
    if (!terminal.flush()) {
        terminal.error("cannot write to standard output");
        status = kFailed;
    }
    terminal.summary(status == kMatched      ? "all records that ran matched"
                     : status == kMismatched ? "mismatch"
                                             : "the run failed");
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
