#include "zentcheck/Options.h"

#include "zentcheck/CommandFlags.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace host {

namespace {

constexpr const char* kReport =
    "With a report (deformers are checked too, and all records, unless flags say otherwise)";

constexpr const char* kBatch = "Many checks, and large ones";

constexpr const char* kUsage =
    "Usage: zentcheck [options] MANIFEST [RESOURCE]\n"
    "       zentcheck --batch LIST --results FOLDER [options]\n"
    "       zentcheck --scene FILE --make-manifest [options] MANIFEST RESOURCE\n"
    "       zentcheck --lint [--scene FILE] MANIFEST [RESOURCE]\n"
    "       zentcheck --snapshot FILE [--frames A-B] [--step X] [--scene FILE] MANIFEST [RESOURCE]\n"
    "       zentcheck --list-methods [--json]\n"
    "       zentcheck --list-resources FILE\n"
    "       zentcheck --disassemble FILE --block N [--constants N]\n"
    "       zentcheck --compile-expression FILE [--inputs \"a;b\" --outputs \"c;d\"]\n";
constexpr const char* kInsteadOfARun = "Instead of a run";

/// An option is told with its value and nothing else: the usage shows what goes together.
class HelpText : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App*, std::string) const override { return kUsage; }
    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_size() == 0 ? "" : " " + option->get_type_name();
    }
};

/// The names between semicolons.
std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> names;
    std::istringstream stream(text);
    for (std::string name; std::getline(stream, name, ';');) {
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

/// "3/16".
std::string readShard(const std::string& text, Shard& shard) {
    const std::size_t slash = text.find('/');
    std::string part = text.substr(0, slash);
    std::string parts = slash == std::string::npos ? "" : text.substr(slash + 1);
    if (!checkCount(part).empty() || !checkCount(parts).empty() || std::stoul(part) > std::stoul(parts)) {
        return "should be such as 3/16, not \"" + text + "\"";
    }
    shard = {static_cast<unsigned int>(std::stoul(part)), static_cast<unsigned int>(std::stoul(parts))};
    return "";
}

/// A file whose name begins with "-" is no flag.
std::string asArgument(const std::string& path) {
    return !path.empty() && path.front() == '-' ? "./" + path : path;
}

} // namespace

std::string Options::logFolder() const {
    return flagValue(kLogFolder);
}

std::vector<std::string> Options::commandWords(const std::string& logFolder) const {
    std::vector<std::string> words{asArgument(manifest)};
    if (!resource.empty()) {
        words.push_back(asArgument(resource));
    }
    words.insert(words.end(), flags.begin(), flags.end());
    const auto flag = std::find(words.begin(), words.end(), kLogFolder);
    if (flag != words.end()) {
        *(flag + 1) = logFolder;
    }
    return words;
}

std::vector<std::string> Options::snapshotWords() const {
    std::vector<std::string> words{"-manifest", asArgument(manifest), "-output", asArgument(snapshot)};
    const std::string nameSpace = flagValue("-namespace");
    for (const auto& [flag, value] : {std::pair<const char*, const std::string&>("-namespace", nameSpace),
                                      {"-resource", resource},
                                      {"-frames", frames},
                                      {"-step", step}}) {
        if (!value.empty()) {
            words.insert(words.end(), {flag, value});
        }
    }
    return words;
}

void Options::setFlag(const std::string& flag, const std::string& value) {
    const auto found = std::find(flags.begin(), flags.end(), flag);
    if (found == flags.end()) {
        flags.insert(flags.end(), {flag, value});
    } else {
        *(found + 1) = value;
    }
    if (flag == "-skip") {
        skipped = split(value);
    }
}

bool Options::has(const char* flag) const {
    return std::find(flags.begin(), flags.end(), flag) != flags.end();
}

std::string Options::flagValue(const char* flag) const {
    const auto found = std::find(flags.begin(), flags.end(), flag);
    return found == flags.end() ? "" : *(found + 1);
}

std::vector<std::string> Options::exportWords() const {
    std::vector<std::string> words{"-output", asArgument(manifest), "-resource", asArgument(resource)};
    words.insert(words.end(), exportFlags.begin(), exportFlags.end());
    if (!snapshot.empty()) {
        words.insert(words.end(), {"-snapshot", asArgument(snapshot)});
    }
    for (const char* flag : {"-namespace", "-skip"}) {
        if (has(flag)) {
            words.insert(words.end(), {flag, flagValue(flag)});
        }
    }
    return words;
}

Options parseOptions(int argc, char** argv) {
    CLI::App app("Holds node functions against the results that a manifest records.", "zentcheck");
    app.set_version_flag("--version", std::string("zentcheck ") + ZENT_VERSION, "Print the version and exit");
    app.formatter(std::make_shared<HelpText>());
    app.get_formatter()->column_width(34);
    app.footer(
        "Status: 0 all records that ran matched, 1 some record mismatched, 2 the run failed.\n"
        "README.md shows how to read a mismatch; docs/ tells what the files hold, and what to do about an error.");

    Options options;
    app.add_option("MANIFEST", options.manifest, "The records to check, a JSON file")->type_name("");
    app.add_option("RESOURCE", options.resource, "The file of large values that the manifest refers to")->type_name("");
    std::array<std::string, std::tuple_size_v<CommandFlags>> values;
    std::array<CLI::Option*, std::tuple_size_v<CommandFlags>> given{};
    for (std::size_t i = 0; i < commandFlags().size(); ++i) {
        const CommandFlag& flag = commandFlags()[i];
        given[i] = app.add_option(flag.option, values[i], flag.help)
                       ->check(CLI::Validator(flag.check, ""))
                       ->type_name(flag.valueName);
        if (flag.isReports) {
            given[i]->group(kReport);
        }
    }
    CLI::Option* results =
        app.add_option("--results", options.results, "Write what became of each record, as JSON Lines")
            ->type_name("FILE")
            ->group(kReport);
    CLI::Option* junit =
        app.add_option("--junit", options.junit, "Write JUnit XML, for CI servers")->type_name("FILE")->group(kReport);
    CLI::Option* page = app.add_option("--report", options.page, "Write a page with pictures, for a browser")
                            ->type_name("FILE")
                            ->group(kReport);
    CLI::Option* strict =
        app.add_flag("--strict", options.isStrict,
                     "Status 2 also where nothing ran, a method is unknown, or --skip names one that no record has")
            ->group(kReport);
    app.add_flag("--chain", options.isChained,
                 "Also let records read each other's results, and tell how errors add up and where they come from")
        ->group(kReport);
    app.add_flag("--quiet", options.isQuiet, "No summary and no progress");
    app.add_option("--scene", options.scenes, "The scene that plug names refer to, a JSON file; several run in turn")
        ->allow_extra_args(false)
        ->type_name("FILE");
    app.add_option("--plugin", options.plugin, "The plug-in [in ../lib, beside this program]")->type_name("FILE");
    app.add_option("--scene-resource", options.sceneResource, "The file of the scene's own geometry [RESOURCE]")
        ->type_name("FILE");
    CLI::Option* make =
        app.add_flag("--make-manifest", options.makeManifest, "Write MANIFEST and RESOURCE from the scene's nodes");
    make->group(kInsteadOfARun);
    const auto exportFlag = [&](const char* option, const char* flag, const char* help) {
        app.add_flag_function(
               option, [&options, flag](std::int64_t) { options.exportFlags.emplace_back(flag); }, help)
            ->needs(make)
            ->group(kInsteadOfARun);
    };
    const auto exportOption = [&](const char* option, const char* flag, const char* value, const char* help) {
        app.add_option_function<std::string>(
               option,
               [&options, flag](const std::string& text) {
                   options.exportFlags.insert(options.exportFlags.end(), {flag, text});
               },
               help)
            ->type_name(value)
            ->needs(make)
            ->group(kInsteadOfARun);
    };
    exportFlag("--selected", "-selected", "Only the nodes that the scene tells as selected");
    exportFlag("--history", "-history", "And what is upstream of them");
    exportOption("--methods", "-methods", "\"a;b\"", "Only these methods");
    exportOption("--notes", "-notes", "FILE", "Write what was left out, and why, into a file, too");
    CLI::Option* lint =
        app.add_flag("--lint", options.lint, "Tell all mistakes of the manifest that show without a run");
    lint->group(kInsteadOfARun);
    CLI::Option* methods =
        app.add_flag("--list-methods", options.listMethods, "Tell the methods, and Maya's nodes and plugs of each");
    methods->group(kInsteadOfARun);
    app.add_flag("--json", options.asJson, "The same as JSON")->needs(methods)->group(kInsteadOfARun);
    CLI::Option* list =
        app.add_option("--list-resources", options.listResources, "Tell what a resource file holds, and check nothing");
    list->type_name("FILE")->group(kInsteadOfARun);
    CLI::Option* disassemble =
        app.add_option("--disassemble", options.disassemble, "Show an expression's byte code, and check nothing");
    CLI::Option* block = app.add_option("--block", options.block, "The block of that file to show");
    CLI::Option* constants = app.add_option("--constants", options.constants, "The block of its constants");
    disassemble->type_name("FILE")->needs(block)->excludes(list)->group(kInsteadOfARun);
    block->type_name("N")->needs(disassemble)->group(kInsteadOfARun);
    constants->type_name("N")->needs(disassemble)->group(kInsteadOfARun);
    CLI::Option* compile = app.add_option("--compile-expression", options.compileExpression,
                                          "Compile Maya's expression language, and show the byte code");
    compile->type_name("FILE")->excludes(list)->excludes(disassemble)->group(kInsteadOfARun);
    app.add_option("--inputs", options.inputs, "The names of its inputs, by slot [as the text names them]")
        ->type_name("\"a;b\"")
        ->needs(compile)
        ->group(kInsteadOfARun);
    app.add_option("--outputs", options.outputs, "The names of its outputs, by slot")
        ->type_name("\"c;d\"")
        ->needs(compile)
        ->group(kInsteadOfARun);
    CLI::Option* snapshot = app.add_option("--snapshot", options.snapshot, "Write a scene with what MANIFEST reads");
    snapshot->type_name("FILE")
        ->excludes(list)
        ->excludes(disassemble)
        ->excludes(compile)
        ->excludes(lint)
        ->excludes(methods)
        ->group(kInsteadOfARun);
    snapshot->excludes(results)->excludes(junit)->excludes(page)->excludes(strict);
    app.add_option("--frames", options.frames, "One scene for each of these frames, such as 1-24")
        ->type_name("A-B")
        ->needs(snapshot)
        ->group(kInsteadOfARun);
    app.add_option("--step", options.step, "From one frame to the next [1]")
        ->check(CLI::Validator(checkNumber, ""))
        ->type_name("X")
        ->needs(snapshot)
        ->group(kInsteadOfARun);
    CLI::Option* batch =
        app.add_option("--batch", options.batch, "Check all of a list, JSON Lines, or of a pattern of manifests")
            ->type_name("LIST")
            ->needs(results)
            ->group(kBatch);
    for (CLI::Option* other : {make, lint, methods, list, disassemble, compile, snapshot}) {
        batch->excludes(other);
    }
    CLI::Option* jobs =
        app.add_option("--jobs", options.jobs,
                       "How many processes check a list, or share out one check's records [of a list, as "
                       "many as there are processors; else one]")
            ->check(CLI::Validator(checkCount, ""))
            ->type_name("N")
            ->group(kBatch);
    for (CLI::Option* other : {make, lint, methods, list, disassemble, compile, snapshot}) {
        jobs->excludes(other);
    }
    app.add_option("--shard", "Only the I-th of N parts of the list")
        ->check(CLI::Validator([&options](std::string& text) { return readShard(text, options.shard); }, ""))
        ->type_name("I/N")
        ->needs(batch)
        ->group(kBatch);
    app.add_flag("--resume", options.resume, "Only what has no results in the folder yet")->needs(batch)->group(kBatch);
    app.add_option("--timeout", options.limits.seconds, "End a check that takes longer than S seconds, as an error")
        ->check(CLI::Validator(checkPositive, ""))
        ->type_name("S")
        ->needs(batch)
        ->group(kBatch);
    app.add_option("--memory", options.limits.megabytes, "End a check that needs more than MB megabytes, as an error")
        ->check(CLI::Validator(checkCount, ""))
        ->type_name("MB")
        ->needs(batch)
        ->group(kBatch);
    try {
        app.parse(argc, argv);
        if (!options.batch.empty() && !(options.manifest.empty() && options.scenes.empty())) {
            throw CLI::ValidationError("--batch", "the list has the manifests and the scenes");
        }
        if (options.jobs && options.batch.empty() && (options.isChained || options.plugin)) {
            throw CLI::ExcludesError("--jobs", options.isChained ? "--chain" : "--plugin");
        }
        if (options.makeManifest && options.resource.empty()) {
            throw CLI::RequiredError("RESOURCE");
        }
        if (options.manifest.empty() && options.needsManifest()) {
            throw CLI::RequiredError("MANIFEST");
        }
        if (options.makeManifest && !options.frames.empty()) {
            throw CLI::ExcludesError("--frames", "--make-manifest");
        }
        if (options.scenes.size() > 1 && (!options.isRun() || !options.snapshot.empty() || options.makeManifest ||
                                          (options.wantsReport() && !options.isChained))) {
            throw CLI::ValidationError("--scene", "only a check without a report takes several");
        }
        if (options.scenes.size() > 1 && (!options.junit.empty() || !options.page.empty())) {
            throw CLI::ValidationError("--scene",
                                       "of several with --chain, zentreport makes the reports out of their --results");
        }
        for (std::size_t i = 0; i < commandFlags().size(); ++i) {
            if (commandFlags()[i].isReports && given[i]->count() > 0 && !options.wantsReport()) {
                throw CLI::ValidationError(commandFlags()[i].option,
                                           "only goes with --results, --junit, --report, --strict or --chain");
            }
        }
    } catch (const CLI::CallForHelp&) {
        throw UsageExit{0, app.help(), ""};
    } catch (const CLI::CallForVersion& version) {
        throw UsageExit{0, std::string(version.what()) + "\n", ""};
    } catch (const CLI::ParseError& error) {
        throw UsageExit{
            2, "", "zentcheck: " + std::string(error.what()) + "\n" + kUsage + "zentcheck --help tells the options.\n"};
    }
    if (!options.scenes.empty()) {
        options.scene = options.scenes.front();
    }
    for (std::size_t i = 0; i < commandFlags().size(); ++i) {
        if (given[i]->count() > 0) {
            options.setFlag(commandFlags()[i].flag, values[i]);
        }
    }
    return options;
}

} // namespace host
