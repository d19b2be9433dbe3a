// zentreport: makes out of results files what people and programs read: a summary, JUnit XML, a page.
#include "zentreport/junit.h"
#include "zentreport/Page.h"
#include "zentreport/Tally.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <optional>

namespace {

enum Status { kMatched = 0, kMismatched = 1, kFailed = 2 };

struct Options {
    std::vector<std::string> files;
    std::string junit;
    std::string page;
    bool isQuiet = false;
};

/// A file that is written whole or told of.
class Output {
public:
    explicit Output(const std::string& path) : path_(path), file_(path, std::ios::binary) { check(); }
    std::ostream& stream() { return file_; }
    void close() {
        file_.close();
        check();
    }

private:
    void check() {
        if (!file_) {
            throw std::runtime_error("cannot write " + path_ + ": " + std::strerror(errno));
        }
    }
    std::string path_;
    std::ofstream file_;
};

void addProblem(report::FileTally& file, const std::string& text) {
    file.problem += (file.problem.empty() ? "" : "; ") + text;
}

/// Reads a file to its end, as far as it can be read. What is wrong with it is told on the file.
void readFile(const std::string& path, report::Tally& tally, report::JUnitWriter* junit, report::Page* page) {
    report::FileTally file;
    file.path = path;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        addProblem(file, std::string("cannot be opened: ") + std::strerror(errno));
    } else {
        try {
            zent::ResultsReader reader(in);
            file.header = reader.header();
            file.isRead = true;
            zent::ResultRecord record;
            while (reader.next(record)) {
                file.counts.add(record);
                file.seconds += record.seconds >= 0.0 ? record.seconds : 0.0;
                tally.add(record);
                if (junit != nullptr) {
                    junit->add(record, file);
                }
                if (page != nullptr) {
                    page->add(record, tally.files.size());
                }
            }
            if (!reader.isComplete()) {
                file.isInterrupted = true;
                addProblem(file, fmt::format("the run was interrupted: {} of {} records, and no summary",
                                             file.counts.records(), file.header.records));
            }
            if (reader.malformedLines() > 0) {
                addProblem(file,
                           fmt::format("{} malformed line{} passed over, the first is {}", reader.malformedLines(),
                                       reader.malformedLines() == 1 ? "" : "s", reader.firstMalformed()));
            }
        } catch (const std::exception& error) {
            addProblem(file, error.what());
        }
    }
    if (junit != nullptr) {
        junit->endFile(file);
    }
    tally.files.push_back(std::move(file));
}

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

Status run(const Options& options) {
    std::optional<Output> junitFile;
    std::optional<report::JUnitWriter> junit;
    if (!options.junit.empty()) {
        junit.emplace(junitFile.emplace(options.junit).stream());
    }
    std::optional<Output> pageFile;
    std::optional<report::Page> page;
    if (!options.page.empty()) {
        pageFile.emplace(options.page);
        page.emplace();
    }
    report::Tally tally;
    for (const std::string& path : options.files) {
        readFile(path, tally, junit ? &*junit : nullptr, page ? &*page : nullptr);
        if (!tally.files.back().problem.empty()) {
            fmt::print(stderr, "zentreport: {}: {}\n", path, tally.files.back().problem);
        }
    }
    if (junit) {
        junit->end();
        junitFile->close();
    }
    if (page) {
        page->write(pageFile->stream(), tally);
        pageFile->close();
    }
    if (!options.isQuiet) {
        printSummary(tally);
        if (std::fflush(stdout) != 0) {
            throw std::runtime_error("cannot write to standard output");
        }
    }
    return statusOf(tally);
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
