#pragma once

#include "zentreport/junit.h"
#include "zentreport/Page.h"
#include "zentreport/Tally.h"

#include <fstream>
#include <optional>
#include <string>

namespace report {

/// A file that is written whole or told of: both throw std::runtime_error.
class Output {
public:
    explicit Output(const std::string& path);
    std::ostream& stream() { return file_; }
    void close();

private:
    void check();

    std::string path_;
    std::ofstream file_;
};

/// What is made of results files. The files that it writes are opened, and so empty, from the start.
class Report {
public:
    /// Empty paths are not written.
    Report(const std::string& junit, const std::string& page);

    /// Reads a file to its end, as far as it can be read. What is wrong with it is told on the file that this returns.
    /// `name` is what the report calls it.
    const FileTally& read(const std::string& path, const std::string& name);
    void write();
    const Tally& tally() const { return tally_; }

private:
    std::optional<Output> junitFile_;
    std::optional<JUnitWriter> junit_;
    std::optional<Output> pageFile_;
    std::optional<Page> page_;
    Tally tally_;
};

} // namespace report
