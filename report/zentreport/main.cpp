// zentreport: makes out of results files what people and programs read: a summary, JUnit XML, a page.
#include "zentreport/Report.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

enum Status { kMatched = 0, kMismatched = 1, kFailed = 2 };

struct Options {
    std::vector<std::string> files;
    std::string junit;
    std::string page;
    bool isQuiet = false;
};

void printSummary(const report::Tally& tally) {
    std::size_t width = 6;
    for (const auto& [name, method] : tally.methods) {
        width = std::max(width, name.size());
    }
    if (!tally.methods.empty()) {
        fmt::print("{:<{}} {:>9} {:>9} {:>9} {:>9}  {}\n", "method", width, "records", "mismatch", "error", "ran not",
                   "worst");
    }
    for (const auto& [name, method] : tally.methods) {
        const report::Counts& counts = method.counts;
        fmt::print("{:<{}} {:>9} {:>9} {:>9} {:>9}  {}\n", name, width, counts.records(),
                   counts[zent::Outcome::mismatch], counts[zent::Outcome::error],
                   counts[zent::Outcome::ignored] + counts[zent::Outcome::skipped],
                   !method.isKnown           ? "unknown method; the nearest is " + method.nearest
                   : method.worst.isMeasured ? report::worstText(method.worst) + " at " + method.worstNode
                                             : "");
    }
    fmt::print("{}\n", tally.verdict());
}

Status statusOf(const report::Tally& tally) {
    if (tally.hasProblem() || tally.counts[zent::Outcome::error] > 0) {
        return kFailed;
    }
    return tally.counts[zent::Outcome::mismatch] > 0 ? kMismatched : kMatched;
}

/// Of a folder all results files in it, by name; of anything else itself.
std::vector<std::string> resultsIn(const std::string& path) {
    namespace fs = std::filesystem;
    if (!fs::is_directory(path)) {
        return {path};
    }
    std::vector<std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".jsonl" && name.front() != '.' && !entry.is_directory()) {
            files.push_back(entry.path().string());
        }
    }
    if (files.empty()) {
        throw std::runtime_error("no results files in folder " + path);
    }
    std::sort(files.begin(), files.end());
    return files;
}

Status run(const Options& options) {
    std::vector<std::string> files;
    for (const std::string& path : options.files) {
        const std::vector<std::string> more = resultsIn(path);
        files.insert(files.end(), more.begin(), more.end());
    }
    report::Report report(options.junit, options.page);
    for (const std::string& path : files) {
        const report::FileTally& file = report.read(path, path);
        if (!file.problem.empty()) {
            fmt::print(stderr, "zentreport: {}: {}\n", path, file.problem);
        }
    }
    report.write();
    if (!options.isQuiet) {
        printSummary(report.tally());
        if (std::fflush(stdout) != 0) {
            throw std::runtime_error("cannot write to standard output");
        }
    }
    return statusOf(report.tally());
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Tells what results files hold: a summary, JUnit XML for CI servers, a page with pictures.",
                 "zentreport");
    app.set_version_flag("--version", "zentreport " ZENT_VERSION, "Print the version and exit");
    app.footer("Status: 0 all records that ran matched, 1 some record mismatched, 2 a record was an error, or a file\n"
               "could not be read to its end. docs/results-format.md tells what a results file holds.");
    Options options;
    app.add_option("RESULTS", options.files, "Results files of ZentReport, of any host")->required()->type_name("");
    app.add_option("--junit", options.junit, "Write JUnit XML: a suite for each file, a case for each record")
        ->type_name("FILE");
    app.add_option("--html", options.page, "Write a page that a browser shows, without a server or a network")
        ->type_name("FILE");
    app.add_flag("--quiet", options.isQuiet, "Print no summary");
    try {
        app.parse(argc, argv);
        return run(options);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const CLI::CallForVersion& version) {
        return app.exit(version);
    } catch (const CLI::ParseError& error) {
        fmt::print(stderr,
                   "zentreport: {}\nUsage: zentreport [options] RESULTS...\nzentreport --help tells the options.\n",
                   error.what());
    } catch (const std::exception& error) {
        fmt::print(stderr, "zentreport: {}\n", error.what());
    }
    return kFailed;
}
