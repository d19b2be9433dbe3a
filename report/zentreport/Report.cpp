#include "zentreport/Report.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace report {

namespace {

void addProblem(FileTally& file, const std::string& text) {
    file.problem += (file.problem.empty() ? "" : "; ") + text;
}

} // namespace

Output::Output(const std::string& path) : path_(path), file_(path, std::ios::binary) {
    check();
}

void Output::close() {
    file_.close();
    check();
}

void Output::check() {
    if (!file_) {
        throw std::runtime_error("cannot write " + path_ + ": " + std::strerror(errno));
    }
}

Report::Report(const std::string& junit, const std::string& page) {
    if (!junit.empty()) {
        junit_.emplace(junitFile_.emplace(junit).stream());
    }
    if (!page.empty()) {
        pageFile_.emplace(page);
        page_.emplace();
    }
}

const FileTally& Report::read(const std::string& path, const std::string& name) {
    FileTally file;
    file.path = name;
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
                tally_.add(record);
                if (junit_) {
                    junit_->add(record, file);
                }
                if (page_) {
                    page_->add(record, tally_.files.size());
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
    if (junit_) {
        junit_->endFile(file);
    }
    tally_.files.push_back(std::move(file));
    return tally_.files.back();
}

void Report::write() {
    if (junit_) {
        junit_->end();
        junitFile_->close();
    }
    if (page_) {
        page_->write(pageFile_->stream(), tally_);
        pageFile_->close();
    }
}

} // namespace report
