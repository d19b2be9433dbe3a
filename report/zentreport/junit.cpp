#include "zentreport/junit.h"

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <stdexcept>

namespace report {

namespace {

using zent::Outcome;

/// As an attribute or a text. What XML cannot hold becomes U+FFFD.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\n':
            result += "&#10;";
            break;
        case '\t':
            result += "&#9;";
            break;
        default:
            result += static_cast<unsigned char>(c) < 0x20 ? "\xEF\xBF\xBD" : std::string(1, c);
        }
    }
    // U+FFFE and U+FFFF are the only others: JSON has been checked to be UTF-8 without surrogates.
    for (const char* bad : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        for (std::size_t at = result.find(bad); at != std::string::npos; at = result.find(bad, at)) {
            result.replace(at, 3, "\xEF\xBF\xBD");
        }
    }
    return result;
}

std::string place(const zent::WorstValue& worst) {
    return worst.at.empty() ? "" : fmt::format("[{}]", fmt::join(worst.at, "]["));
}

std::string failureMessage(const zent::ResultRecord& record, double tolerance) {
    const zent::WorstValue& worst = record.worst;
    std::string message;
    if (worst.isMeasured) {
        message = fmt::format("{}{} is off by {}; {} of {} values over the tolerance {}", worst.output, place(worst),
                              worstText(worst), worst.over, worst.count, tolerance);
    }
    if (worst.notFinite > 0) {
        message +=
            fmt::format("{}{} of {} values not finite", message.empty() ? "" : "; ", worst.notFinite, worst.count);
    }
    if (!worst.note.empty()) {
        message += (message.empty() ? "" : "; ") + worst.note;
    }
    return message.empty() ? "mismatch" : message;
}

std::string valueOf(const nlohmann::json& line, const char* key) {
    const auto found = line.find(key);
    return found == line.end() ? "" : std::string(key) + " output: " + found->dump() + "\n";
}

std::string bodyOf(const zent::ResultRecord& record, const FileTally& file) {
    switch (record.outcome) {
    case Outcome::mismatch:
        return fmt::format("<failure type=\"mismatch\" message=\"{}\">{}</failure>",
                           escaped(failureMessage(record, file.header.tolerance)),
                           escaped(valueOf(record.whole, "maya") + valueOf(record.whole, "zent")));
    case Outcome::error:
        return fmt::format("<error type=\"error\" message=\"{}\"/>", escaped(record.error));
    case Outcome::ignored:
    case Outcome::skipped:
        return "<skipped/>";
    case Outcome::match:
        break;
    }
    return "";
}

std::string secondsText(double seconds) {
    return fmt::format("{:.6f}", std::isfinite(seconds) && seconds >= 0.0 ? seconds : 0.0);
}

/// A date and time without its zone, as the schema has it.
std::string timestampOf(const std::string& time) {
    constexpr std::string_view kPattern = "dddd-dd-ddTdd:dd:ddZ";
    bool fits = time.size() == kPattern.size();
    for (std::size_t i = 0; fits && i < time.size(); ++i) {
        fits = kPattern[i] == 'd' ? time[i] >= '0' && time[i] <= '9' : time[i] == kPattern[i];
    }
    return fits ? time.substr(0, time.size() - 1) : "1970-01-01T00:00:00";
}

std::string testcase(const std::string& className, const std::string& name, double seconds, const std::string& body) {
    return fmt::format("    <testcase classname=\"{}\" name=\"{}\" time=\"{}\"{}{}{}\n", escaped(className),
                       escaped(name), secondsText(seconds), body.empty() ? "/>" : ">", body,
                       body.empty() ? "" : "</testcase>");
}

} // namespace

JUnitWriter::JUnitWriter(std::ostream& out) : out_(out), cases_(std::tmpfile()) {
    if (cases_ == nullptr) {
        throw std::runtime_error("cannot make a temporary file");
    }
    out_ << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n";
}

JUnitWriter::~JUnitWriter() {
    std::fclose(cases_);
}

void JUnitWriter::write(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), cases_) != text.size()) {
        throw std::runtime_error("cannot write to the temporary file");
    }
}

void JUnitWriter::add(const zent::ResultRecord& record, const FileTally& file) {
    write(testcase(record.method.empty() ? "(no method)" : record.method,
                   fmt::format("{} #{}", record.node, record.index), record.seconds, bodyOf(record, file)));
}

void JUnitWriter::endFile(const FileTally& file) {
    const bool hasProblem = !file.problem.empty();
    if (hasProblem) {
        write(testcase("results file", file.path, 0.0,
                       fmt::format("<error type=\"file\" message=\"{}\"/>", escaped(file.problem))));
    }
    const Counts& counts = file.counts;
    out_ << fmt::format(
        "  <testsuite id=\"{}\" name=\"{}\" package=\"zent\" hostname=\"{}\" timestamp=\"{}\" tests=\"{}\" "
        "failures=\"{}\" errors=\"{}\" skipped=\"{}\" time=\"{}\">\n",
        suites_++, escaped(file.path), escaped(file.header.host.empty() ? "-" : file.header.host),
        timestampOf(file.header.time), counts.records() + (hasProblem ? 1 : 0), counts[Outcome::mismatch],
        counts[Outcome::error] + (hasProblem ? 1 : 0), counts[Outcome::ignored] + counts[Outcome::skipped],
        secondsText(file.seconds));
    out_ << fmt::format("    <properties>\n      <property name=\"manifest\" value=\"{}\"/>\n      <property "
                        "name=\"tolerance\" value=\"{}\"/>\n    </properties>\n",
                        escaped(file.header.manifest), file.header.tolerance);
    std::rewind(cases_);
    std::array<char, 1U << 16> chunk{};
    while (const std::size_t size = std::fread(chunk.data(), 1, chunk.size(), cases_)) {
        out_.write(chunk.data(), static_cast<std::streamsize>(size));
    }
    std::rewind(cases_);
    if (ftruncate(fileno(cases_), 0) != 0) {
        throw std::runtime_error("cannot empty the temporary file");
    }
    out_ << "    <system-out/>\n    <system-err/>\n  </testsuite>\n";
}

void JUnitWriter::end() {
    out_ << "</testsuites>\n";
}

} // namespace report
