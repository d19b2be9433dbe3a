#pragma once

#include "zentreport/Tally.h"

#include <cstdio>
#include <ostream>

namespace report {

/// Writes JUnit XML as the records come: a suite for each file, a case for each record. A suite says first how many
/// cases it has, so its cases wait in a temporary file until it ends.
class JUnitWriter {
public:
    /// Throws std::runtime_error where there can be no temporary file.
    explicit JUnitWriter(std::ostream& out);
    JUnitWriter(const JUnitWriter&) = delete;
    JUnitWriter& operator=(const JUnitWriter&) = delete;
    ~JUnitWriter();

    void add(const zent::ResultRecord& record, const FileTally& file);
    /// Ends a file's suite. One that could not be read, or not to its end, has a case of its own that is an error.
    void endFile(const FileTally& file);
    void end();

private:
    void write(const std::string& text);

    std::ostream& out_;
    std::FILE* cases_;
    int suites_ = 0;
};

} // namespace report
