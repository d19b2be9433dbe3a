#include "zentcheck/Reports.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace host {

namespace {

std::string temporaryFile() {
    std::error_code problem; // without a folder for temporary files, the path is that of the working folder
    std::string path = (std::filesystem::temp_directory_path(problem) / "zentcheck-XXXXXX").string();
    const int file = mkstemp(path.data());
    if (file < 0) {
        throw std::runtime_error("cannot write temporary file " + path + ": " + std::strerror(errno));
    }
    close(file);
    return path;
}

/// A report in place of a file that the run reads or writes would end that file.
void requireOther(const std::string& path, const Options& options) {
    std::vector<std::string> others{options.manifest, options.resource, options.results};
    others.insert(others.end(), options.scenes.begin(), options.scenes.end());
    for (const std::string& other : others) {
        std::error_code ignored;
        if (!path.empty() && !other.empty() && (path == other || std::filesystem::equivalent(path, other, ignored))) {
            throw std::runtime_error("report " + path + " would overwrite " + other);
        }
    }
}

} // namespace

Reports::Reports(const Options& options) : results_(options.results), name_(options.results) {
    if (options.junit.empty() && options.page.empty()) {
        return;
    }
    requireOther(options.junit, options);
    requireOther(options.page, options);
    if (options.junit == options.page) {
        throw std::runtime_error("both reports in one file: " + options.page);
    }
    report_.emplace(options.junit, options.page);
    if (results_.empty()) {
        results_ = temporaryFile();
        name_ = options.manifest;
        isTemporary_ = true;
    }
}

Reports::~Reports() {
    if (isTemporary_) {
        std::error_code ignored;
        std::filesystem::remove(results_, ignored);
    }
}

void Reports::write() {
    if (report_) {
        report_->read(results_, name_);
        report_->write();
    }
}

} // namespace host
