#include "zent/results/ResultsReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace zent {

namespace {

using nlohmann::json;

constexpr std::size_t kChunkBytes = 1U << 18;
constexpr std::size_t kMaxLineBytes = std::size_t{1} << 29; // both sides of a shape of twelve million points
constexpr int kVersion = 1;
constexpr double kRadiansPerDegree = 0.017453292519943295;

const json* find(const json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() || found->is_null() ? nullptr : &*found;
}

std::string textAt(const json& object, const char* key) {
    const json* value = find(object, key);
    if (value == nullptr) {
        return "";
    }
    if (!value->is_string()) {
        throw std::runtime_error(std::string("\"") + key + "\" is no string");
    }
    return value->get<std::string>();
}

/// NaN where there is none.
double numberAt(const json& object, const char* key) {
    const json* value = find(object, key);
    if (value != nullptr && value->is_number()) {
        return value->get<double>();
    }
    if (value != nullptr && value->is_string()) {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        return *value == "Infinity" ? kInfinity : *value == "-Infinity" ? -kInfinity : std::nan("");
    }
    return std::nan("");
}

std::uint64_t countAt(const json& object, const char* key) {
    const json* value = find(object, key);
    if (value == nullptr) {
        return 0;
    }
    if (!value->is_number_unsigned()) {
        throw std::runtime_error(std::string("\"") + key + "\" is no count");
    }
    return value->get<std::uint64_t>();
}

Outcome outcomeAt(const json& object) {
    const std::string name = textAt(object, "outcome");
    const auto found = std::find(kOutcomeNames.begin(), kOutcomeNames.end(), name);
    if (found == kOutcomeNames.end()) {
        throw std::runtime_error("unknown outcome \"" + name + "\"");
    }
    return static_cast<Outcome>(found - kOutcomeNames.begin());
}

void takeStatistics(const json& statistics, WorstValue& worst) {
    if (!statistics.is_object()) {
        throw std::runtime_error("\"statistics\" holds no object");
    }
    worst.count += countAt(statistics, "count");
    worst.over += countAt(statistics, "over");
    worst.notFinite += countAt(statistics, "notFinite");
    if (worst.note.empty()) {
        worst.note = textAt(statistics, "note");
    }
    const double greatest = numberAt(statistics, "greatest");
    const std::string unit = textAt(statistics, "unit");
    const double size = unit == "degrees" ? greatest * kRadiansPerDegree : greatest;
    if (std::isnan(size) || (worst.isMeasured && size <= worst.size)) {
        return;
    }
    worst.isMeasured = true;
    worst.value = greatest;
    worst.size = size;
    worst.unit = unit;
    worst.output = textAt(statistics, "output");
    worst.at.clear();
    if (const json* at = find(statistics, "at"); at != nullptr && at->is_array()) {
        for (const json& index : *at) {
            worst.at.push_back(index.is_number_unsigned() ? index.get<std::uint64_t>() : 0);
        }
    }
}

void readRecord(json&& line, ResultRecord& record) {
    record.index = countAt(line, "index");
    record.node = textAt(line, "node");
    record.method = textAt(line, "method");
    record.outcome = outcomeAt(line);
    const json* warning = find(line, "warning");
    record.warning = warning != nullptr && *warning == true;
    record.seconds = numberAt(line, "seconds");
    record.error = textAt(line, "error");
    record.nearest = textAt(line, "nearest");
    record.worst = WorstValue();
    if (const json* list = find(line, "statistics"); list != nullptr) {
        if (!list->is_array()) {
            throw std::runtime_error("\"statistics\" is no list");
        }
        for (const json& statistics : *list) {
            takeStatistics(statistics, record.worst);
        }
    }
    record.whole = std::move(line);
}

} // namespace

ResultsReader::ResultsReader(std::istream& in) : in_(in), chunk_(kChunkBytes) {
    if (!nextLine(line_)) {
        throw std::runtime_error(line_.empty() ? "the file is empty" : "no results file: its first line has no end");
    }
    json line = json::parse(line_, nullptr, false);
    if (!line.is_object() || line.value("format", json()) != "zent-results") {
        throw std::runtime_error("no results file: its first line is no header");
    }
    const json& version = line["version"];
    if (!version.is_number_integer() || version != kVersion) {
        throw std::runtime_error("a results file of version " + version.dump() + "; this program reads version " +
                                 std::to_string(kVersion));
    }
    header_.program = textAt(line, "program");
    header_.host = textAt(line, "host");
    header_.manifest = textAt(line, "manifest");
    header_.time = textAt(line, "time");
    header_.records = countAt(line, "records");
    header_.tolerance = numberAt(line, "tolerance");
    header_.whole = std::move(line);
}

bool ResultsReader::next(ResultRecord& record) {
    while (nextLine(line_)) {
        try {
            json line = json::parse(line_);
            if (!line.is_object() || isComplete()) {
                throw std::runtime_error(isComplete() ? "it stands behind the summary" : "no object");
            }
            const json* summary = find(line, "summary");
            if (summary != nullptr && summary->is_object()) {
                summary_ = *summary;
                continue;
            }
            readRecord(std::move(line), record);
            return true;
        } catch (const std::exception& error) {
            passOver(error.what());
        }
    }
    return false;
}

void ResultsReader::passOver(const std::string& why) {
    if (malformed_++ == 0) {
        firstMalformed_ = "line " + std::to_string(lineNumber_) + ": " + why;
    }
}

/// A line without its end was cut off, and is none: it is left in `line`.
bool ResultsReader::nextLine(std::string& line) {
    line.clear();
    bool isTooLong = false;
    while (true) {
        if (chunkAt_ == chunkEnd_) {
            in_.read(chunk_.data(), static_cast<std::streamsize>(chunk_.size()));
            chunkAt_ = 0;
            chunkEnd_ = static_cast<std::size_t>(in_.gcount());
            if (chunkEnd_ == 0) {
                return false;
            }
        }
        const char* begin = chunk_.data() + chunkAt_;
        const void* end = std::memchr(begin, '\n', chunkEnd_ - chunkAt_);
        const std::size_t size =
            end == nullptr ? chunkEnd_ - chunkAt_ : static_cast<std::size_t>(static_cast<const char*>(end) - begin);
        isTooLong = isTooLong || line.size() + size > kMaxLineBytes;
        if (!isTooLong) {
            line.append(begin, size);
        }
        chunkAt_ += size + (end == nullptr ? 0 : 1);
        if (end == nullptr) {
            continue;
        }
        ++lineNumber_;
        if (!isTooLong) {
            return true;
        }
        passOver("longer than any line can be");
        line.clear();
        isTooLong = false;
    }
}

} // namespace zent
