#include "zent/results/ResultsWriter.h"

#include <fcntl.h>
#include <fmt/compile.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace zent {

namespace {

using nlohmann::json;
using Buffer = fmt::memory_buffer;

void put(Buffer& line, std::string_view text) {
    line.append(text.data(), text.data() + text.size());
}

std::string dumped(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

void putText(Buffer& line, std::string_view text) {
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char letter) {
        return letter >= ' ' && letter <= '~' && letter != '"' && letter != '\\';
    });
    if (!isPlain) {
        put(line, dumped(json(std::string(text))));
        return;
    }
    line.push_back('"');
    put(line, text);
    line.push_back('"');
}

void putKey(Buffer& line, std::string_view key) {
    put(line, ",\"");
    put(line, key);
    put(line, "\":");
}

void putJson(Buffer& line, std::string_view key, const json* value) {
    if (value != nullptr) {
        putKey(line, key);
        put(line, dumped(withNamedNumbers(*value)));
    }
}

void putNumber(Buffer& line, double value) {
    if (value == 0.0) { // what most differences are
        line.push_back('0');
    } else if (std::isfinite(value)) {
        // Nine digits tell every float from all others.
        fmt::format_to(std::back_inserter(line), FMT_COMPILE("{:.9g}"), value);
    } else {
        put(line, "\"Infinity\"");
    }
}

void putCount(Buffer& line, std::string_view key, std::uint64_t count) {
    putKey(line, key);
    const fmt::format_int digits(count);
    line.append(digits.data(), digits.data() + digits.size());
}

void putHistogram(Buffer& line, const Histogram& histogram) {
    fmt::format_to(std::back_inserter(line), R"(,"histogram":{{"below":{},"from":{},"perDecade":{},"counts":[)",
                   histogram.below, Histogram::kFrom, Histogram::kPerDecade);
    std::size_t used = histogram.counts.size();
    while (used > 0 && histogram.counts[used - 1] == 0) {
        --used;
    }
    fmt::format_to(
        std::back_inserter(line), "{}]}}",
        fmt::join(histogram.counts.begin(), histogram.counts.begin() + static_cast<std::ptrdiff_t>(used), ","));
}

void putStatistics(Buffer& line, const Statistics& statistics) {
    put(line, "{\"output\":");
    putText(line, statistics.output);
    putKey(line, "type");
    putText(line, statistics.type);
    putKey(line, "unit");
    putText(line, kUnitNames[static_cast<std::size_t>(statistics.unit)]);
    putCount(line, "count", statistics.count);
    if (statistics.isMeasured()) {
        putKey(line, "mean");
        putNumber(line, statistics.mean());
        putKey(line, "rms");
        putNumber(line, statistics.rms());
        putKey(line, "greatest");
        putNumber(line, statistics.greatest);
        putKey(line, "at");
        line.push_back('[');
        for (unsigned int i = 0; i < statistics.at.count; ++i) {
            put(line, i == 0 ? "" : ",");
            const fmt::format_int digits(statistics.at.indices[i]);
            line.append(digits.data(), digits.data() + digits.size());
        }
        line.push_back(']');
    } else {
        put(line, R"(,"mean":null,"rms":null,"greatest":null,"at":null)");
    }
    putCount(line, "over", statistics.over);
    putCount(line, "notFinite", statistics.notFinite);
    if (statistics.hasHistogram) {
        putHistogram(line, statistics.histogram);
    }
    if (!statistics.note.empty()) {
        putKey(line, "note");
        putText(line, statistics.note);
    }
    line.push_back('}');
}

void putAllStatistics(Buffer& line, const std::vector<Statistics>& all) {
    putKey(line, "statistics");
    line.push_back('[');
    for (const Statistics& statistics : all) {
        put(line, &statistics == all.data() ? "" : ",");
        putStatistics(line, statistics);
    }
    line.push_back(']');
}

void putChain(Buffer& line, const ChainLine& chain) {
    putKey(line, "chain");
    put(line, "{\"outcome\":");
    putText(line, kOutcomeNames.at(static_cast<std::size_t>(chain.outcome)));
    if (chain.isOwn) {
        put(line, ",\"own\":true");
    }
    if (!chain.error.empty()) {
        putKey(line, "error");
        putText(line, chain.error);
    }
    if (chain.statistics != nullptr && chain.error.empty()) {
        putAllStatistics(line, *chain.statistics);
    }
    fmt::format_to(std::back_inserter(line), ",\"reads\":[{}]", fmt::join(chain.reads, ","));
    putJson(line, "path", chain.path.is_null() ? nullptr : &chain.path);
    if (!chain.why.empty()) {
        putKey(line, "why");
        putText(line, chain.why);
    }
    line.push_back('}');
}

/// The bytes of a list of 32-bit numbers in base64. The processors that this is built for are little-endian.
template <class T>
std::string base64(const std::vector<T>& numbers) {
    static_assert(sizeof(T) == 4);
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::vector<unsigned char> bytes(numbers.size() * sizeof(T));
    if (!bytes.empty()) {
        std::memcpy(bytes.data(), numbers.data(), bytes.size());
    }
    const std::size_t size = bytes.size();
    bytes.resize((size + 2) / 3 * 3);
    std::string text;
    text.reserve(bytes.size() / 3 * 4);
    for (std::size_t i = 0; i < size; i += 3) {
        const std::uint32_t bits =
            static_cast<std::uint32_t>(bytes[i]) << 16U | static_cast<std::uint32_t>(bytes[i + 1]) << 8U | bytes[i + 2];
        for (const unsigned int shift : {18U, 12U, 6U, 0U}) {
            text += kDigits[bits >> shift & 63U];
        }
    }
    const std::size_t padding = bytes.size() - size;
    return text.replace(text.size() - padding, padding, padding, '=');
}

json shapesJson(const ShapeLine& shapes) {
    json value = shapes.layout;
    if (value.contains("omitted")) {
        return value;
    }
    value["maya"] = base64(shapes.maya);
    value["zent"] = base64(shapes.zent);
    if (!shapes.polygonCounts.empty()) {
        value["polygons"] = {{"counts", base64(shapes.polygonCounts)}, {"vertices", base64(shapes.polygonVertices)}};
    }
    return value;
}

} // namespace

ResultsWriter::~ResultsWriter() {
    close();
}

void ResultsWriter::open(const std::string& path, std::uint64_t kept) {
    path_ = path;
    constexpr int kMode = 0666; // as far as the user's mask allows
    file_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | (kept == 0 ? O_TRUNC : O_APPEND), kMode);
    if (file_ < 0 || (kept != 0 && ftruncate(file_, static_cast<off_t>(kept)) != 0)) {
        throw std::runtime_error("cannot write results file " + path + ": " + std::strerror(errno));
    }
}

void ResultsWriter::write(std::string_view line) {
    if (isOpen()) {
        line_.clear();
        put(line_, line);
        flush();
    }
}

void ResultsWriter::write(const RecordLine& record) {
    if (!isOpen()) {
        return;
    }
    line_.clear();
    put(line_, "{\"index\":");
    const fmt::format_int digits(record.index);
    line_.append(digits.data(), digits.data() + digits.size());
    putKey(line_, "node");
    putText(line_, record.node);
    putKey(line_, "method");
    putText(line_, record.method);
    putKey(line_, "outcome");
    putText(line_, kOutcomeNames.at(static_cast<std::size_t>(record.outcome)));
    if (record.warning) {
        put(line_, ",\"warning\":true");
    }
    putKey(line_, "seconds");
    fmt::format_to(std::back_inserter(line_), FMT_COMPILE("{:.3g}"), record.seconds);
    if (!record.error.empty()) {
        putKey(line_, "error");
        putText(line_, record.error);
    }
    if (!record.nearest.empty()) {
        putKey(line_, "nearest");
        putText(line_, record.nearest);
    }
    if (record.statistics != nullptr) {
        putAllStatistics(line_, *record.statistics);
    }
    if (record.point >= 0) {
        putCount(line_, "point", static_cast<std::uint64_t>(record.point));
    }
    putJson(line_, "maya", record.maya);
    putJson(line_, "zent", record.zent);
    putJson(line_, "inputs", record.inputs);
    putJson(line_, "closure", record.closure);
    putJson(line_, "samples", record.samples);
    if (record.shapes != nullptr) {
        putKey(line_, "shapes");
        put(line_, dumped(shapesJson(*record.shapes)));
    }
    if (record.chain != nullptr) {
        putChain(line_, *record.chain);
    }
    line_.push_back('}');
    flush();
}

void ResultsWriter::flush() {
    line_.push_back('\n');
    if (take_) {
        take_({line_.data(), line_.size()});
        return;
    }
    const char* next = line_.data();
    const char* const end = next + line_.size();
    while (next != end) {
        const ssize_t written = ::write(file_, next, static_cast<std::size_t>(end - next));
        if (written > 0) {
            next += written;
        } else if (written == 0 || errno != EINTR) {
            problem_ = "cannot write results file " + path_ + ": " + std::strerror(written == 0 ? ENOSPC : errno);
            ::close(std::exchange(file_, -1));
            return;
        }
    }
}

bool ResultsWriter::close() {
    if (file_ >= 0 && ::close(std::exchange(file_, -1)) != 0) {
        problem_ = "cannot write results file " + path_ + ": " + std::strerror(errno);
    }
    return problem_.empty();
}

void ResultsSummary::Worst::take(const RecordLine& record, const Statistics& statistics) {
    if (statistics.isMeasured() && statistics.size() > size) {
        size = statistics.size();
        value = statistics.greatest;
        unit = statistics.unit;
        index = record.index;
        node = record.node;
        output = statistics.output;
    }
}

void ResultsSummary::Counts::add(const RecordLine& record) {
    ++outcomes.at(static_cast<std::size_t>(record.outcome));
    warnings += record.warning ? 1 : 0;
    if (record.statistics != nullptr) {
        for (const Statistics& statistics : *record.statistics) {
            (record.outcome == Outcome::mismatch ? mismatch : match).take(record, statistics);
        }
    }
}

std::uint64_t ResultsSummary::Counts::records() const {
    return std::accumulate(outcomes.begin(), outcomes.end(), std::uint64_t{0});
}

nlohmann::json ResultsSummary::Counts::json() const {
    nlohmann::json value{{"records", records()}, {"warnings", warnings}};
    for (std::size_t i = 0; i < kOutcomeNames.size(); ++i) {
        value[kOutcomeNames[i]] = outcomes[i];
    }
    value["worst"] = nullptr;
    if (worst().size >= 0.0) {
        value["worst"] = {{"index", worst().index},
                          {"node", worst().node},
                          {"output", worst().output},
                          {"unit", kUnitNames[static_cast<std::size_t>(worst().unit)]},
                          {"value", worst().value}};
    }
    return value;
}

void ResultsSummary::add(const RecordLine& record, bool isUnknown) {
    if (last_ == nullptr || last_->first != record.method) {
        last_ = &*methods_.try_emplace(std::string(record.method)).first;
    }
    last_->second.isUnknown = last_->second.isUnknown || isUnknown;
    last_->second.add(record);
}

nlohmann::json ResultsSummary::json(bool stopped, double seconds) const {
    std::map<std::string_view, const Counts*> sorted;
    for (const auto& [method, counts] : methods_) {
        sorted.emplace(method, &counts);
    }
    Counts all;
    std::string_view worstMethod;
    const auto takeWorst = [&worstMethod](std::string_view method, const Worst& of, Worst& worst) {
        // Of equals the earliest record's.
        if (of.size > worst.size || (of.size == worst.size && of.size >= 0.0 && of.index < worst.index)) {
            worst = of;
            worstMethod = method;
        }
    };
    nlohmann::json unknown(nlohmann::json::value_t::array);
    nlohmann::json list(nlohmann::json::value_t::array);
    for (const auto& [method, counts] : sorted) {
        for (std::size_t i = 0; i < kOutcomeNames.size(); ++i) {
            all.outcomes[i] += counts->outcomes[i];
        }
        all.warnings += counts->warnings;
        takeWorst(method, counts->mismatch, all.mismatch);
        if (counts->isUnknown) {
            unknown.push_back(method);
        }
        list.push_back(counts->json());
        list.back()["method"] = method;
    }
    if (all.mismatch.size < 0.0) {
        for (const auto& [method, counts] : sorted) {
            takeWorst(method, counts->match, all.match);
        }
    }
    nlohmann::json value = all.json();
    if (!value["worst"].is_null()) {
        value["worst"]["method"] = worstMethod;
    }
    value["unknown"] = std::move(unknown);
    value["stopped"] = stopped;
    value["seconds"] = seconds;
    value["methods"] = std::move(list);
    return value;
}

nlohmann::json withNamedNumbers(nlohmann::json value) {
    if (value.is_number_float()) {
        const double number = value.get<double>();
        if (!std::isfinite(number)) {
            value = std::isnan(number) ? "NaN" : number > 0.0 ? "Infinity" : "-Infinity";
        }
    } else if (value.is_structured()) {
        for (nlohmann::json& item : value) {
            item = withNamedNumbers(std::move(item));
        }
    }
    return value;
}

} // namespace zent
