#include "zentreport/Page.h"

#include "zentreport/template.h"

#include <fmt/format.h>

#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>

namespace report {

namespace {

using nlohmann::json;
using zent::Outcome;

constexpr std::string_view kDataMark = "<!-- the data -->";
constexpr std::size_t kMaxName = 4096; // of a node or text in a row

std::string cut(const std::string& text) {
    if (text.size() <= kMaxName) {
        return text;
    }
    std::size_t end = kMaxName;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end; // not within a character
    }
    return text.substr(0, end) + "...";
}

json finite(double value) {
    return std::isfinite(value) ? json(value)
                                : json(std::isnan(value) ? "NaN"
                                       : value > 0.0     ? "Infinity"
                                                         : "-Infinity");
}

/// JSON that may stand in a script element: no "<" ends it.
std::string forScript(const json& value) {
    const std::string text = value.dump(-1, ' ', false, json::error_handler_t::replace);
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (c == '<') {
            result += "\\u003c";
        } else {
            result += c;
        }
    }
    return result;
}

json countsOf(const Counts& counts) {
    return {{"outcomes", counts.outcomes}, {"warnings", counts.warnings}};
}

json worstOf(const MethodTally& tally) {
    if (!tally.worst.isMeasured) {
        return nullptr;
    }
    return {{"value", finite(tally.worst.value)},
            {"size", finite(tally.worst.size)},
            {"unit", tally.worst.unit},
            {"output", tally.worst.output},
            {"at", tally.worst.at},
            {"record", tally.worstNode}};
}

json filesOf(const Tally& tally) {
    json list = json::array();
    for (const FileTally& file : tally.files) {
        list.push_back({{"path", file.path},
                        {"header", file.header.whole},
                        {"isRead", file.isRead},
                        {"isInterrupted", file.isInterrupted},
                        {"problem", file.problem},
                        {"counts", countsOf(file.counts)},
                        {"seconds", finite(file.seconds)}});
    }
    return list;
}

json methodsOf(const Tally& tally) {
    json list = json::array();
    for (const auto& [name, method] : tally.methods) {
        list.push_back({{"name", name},
                        {"counts", countsOf(method.counts)},
                        {"worst", worstOf(method)},
                        {"known", method.isKnown},
                        {"nearest", method.nearest}});
    }
    return list;
}

int severity(const zent::ResultRecord& record) {
    switch (record.outcome) {
    case Outcome::mismatch:
        return 5;
    case Outcome::error:
        return 4;
    case Outcome::match:
        return record.warning ? 3 : 2;
    case Outcome::ignored:
        return record.nearest.empty() ? 1 : 3;
    case Outcome::skipped:
        break;
    }
    return 0;
}

std::string textOf(const zent::ResultRecord& record) {
    if (record.outcome == Outcome::ignored && !record.nearest.empty()) {
        return "unknown method; the nearest is " + record.nearest;
    }
    if (record.outcome == Outcome::error) {
        return record.error;
    }
    const zent::WorstValue& worst = record.worst;
    return worst.note.empty() && worst.notFinite > 0
               ? fmt::format("{} of {} values not finite", worst.notFinite, worst.count)
               : worst.note;
}

} // namespace

bool Page::Rank::operator<(const Rank& other) const {
    if (outcome != other.outcome) {
        return outcome > other.outcome;
    }
    if (size != other.size) {
        return size > other.size;
    }
    return number < other.number;
}

Page::Rank Page::rankOf(const zent::ResultRecord& record, std::size_t number) {
    const double size = record.worst.notFinite > 0 ? std::numeric_limits<double>::infinity()
                        : record.worst.isMeasured  ? record.worst.size
                                                   : 0.0;
    return {severity(record), size, number};
}

/// A file may hold anything: what is not of its type is left out.
void Page::keepChain(const zent::ResultRecord& record, std::size_t file, std::size_t number) {
    constexpr std::size_t kReads = 4096;
    const auto found = record.whole.find("chain");
    if (found == record.whole.end() || !found->is_object()) {
        return;
    }
    if (chains_.size() == kChained) {
        ++chainsLeftOut_;
        return;
    }
    const auto part = [&found](const char* name) { return found->contains(name) ? (*found)[name] : json(); };
    json kept{{"file", file},
              {"number", number},
              {"index", record.index},
              {"node", cut(record.node)},
              {"method", cut(record.method)},
              {"outcome", "ignored"},
              {"own", part("own") == true},
              {"reads", json::array()}};
    for (const char* const name : {"match", "mismatch", "error"}) {
        if (part("outcome") == name) {
            kept["outcome"] = name;
        }
    }
    for (const char* const name : {"why", "error"}) {
        if (const json text = part(name); text.is_string()) {
            kept[name] = cut(text.get<std::string>());
        }
    }
    if (const json reads = part("reads"); reads.is_array()) {
        for (const json& read : reads) {
            if (read.is_number_unsigned() && kept["reads"].size() < kReads) {
                kept["reads"].push_back(read);
            }
        }
    }
    const json statistics = part("statistics");
    for (const json& one : statistics.is_array() ? statistics : json::array()) {
        if (one.is_object() && one.contains("greatest") && one["greatest"].is_number() &&
            (!kept.contains("value") || kept["value"] < one["greatest"])) {
            kept["value"] = one["greatest"];
            kept["unit"] = one.contains("unit") && one["unit"].is_string() ? one["unit"] : json("value");
        }
    }
    chains_.push_back(std::move(kept));
}

void Page::add(const zent::ResultRecord& record, std::size_t file) {
    keepChain(record, file, records_);
    const Rank rank = rankOf(record, records_++);
    keepFull(rank, record);
    if (rows_.size() == kRows && !(rank < rows_.rbegin()->rank)) {
        return;
    }
    Row row;
    row.rank = rank;
    row.file = file;
    row.index = record.index;
    row.node = cut(record.node);
    row.method = record.method;
    row.outcome = record.outcome;
    row.warning = record.warning;
    row.seconds = record.seconds;
    row.value = record.worst.isMeasured ? record.worst.value : std::nan("");
    row.unit = record.worst.unit;
    row.output = cut(record.worst.output);
    row.over = record.worst.over;
    row.count = record.worst.count;
    row.text = cut(textOf(record));
    rows_.insert(std::move(row));
    if (rows_.size() > kRows) {
        rows_.erase(std::prev(rows_.end()));
    }
}

void Page::keepFull(const Rank& rank, const zent::ResultRecord& record) {
    if (full_.size() == kFullRecords && !(rank < full_.rbegin()->rank)) {
        return;
    }
    std::string line = forScript(record.whole);
    if (fullBytes_ + line.size() > kFullBytes) {
        json shorter = record.whole;
        if (shorter.contains("shapes") && shorter["shapes"].is_object()) {
            shorter["shapes"] = {{"kind", shorter["shapes"].value("kind", json())},
                                 {"count", shorter["shapes"].value("count", json())},
                                 {"omitted", true}};
        }
        line = forScript(shorter);
    }
    if (fullBytes_ + line.size() > kFullBytes && !full_.empty()) {
        return;
    }
    fullBytes_ += line.size();
    full_.insert({rank, std::move(line)});
    if (full_.size() > kFullRecords) {
        fullBytes_ -= full_.rbegin()->line.size();
        full_.erase(std::prev(full_.end()));
    }
}

void Page::writeData(std::ostream& out, const Tally& tally) const {
    json units = json::array({"value", "degrees", "distance"});
    json methods = methodsOf(tally);
    std::map<std::string, std::size_t> methodNumbers;
    for (const json& method : methods) {
        methodNumbers.emplace(method["name"].get<std::string>(), methodNumbers.size());
    }
    // Columns, as they are half as long and parsed in half the time of objects.
    json columns = {{"number", json::array()},  {"file", json::array()},    {"index", json::array()},
                    {"node", json::array()},    {"method", json::array()},  {"outcome", json::array()},
                    {"warning", json::array()}, {"seconds", json::array()}, {"value", json::array()},
                    {"unit", json::array()},    {"output", json::array()},  {"over", json::array()},
                    {"count", json::array()},   {"text", json::array()}};
    for (const Row& row : rows_) {
        columns["number"].push_back(row.rank.number);
        columns["file"].push_back(row.file);
        columns["index"].push_back(row.index);
        columns["node"].push_back(row.node);
        columns["method"].push_back(methodNumbers.at(row.method));
        columns["outcome"].push_back(static_cast<int>(row.outcome));
        columns["warning"].push_back(row.warning ? 1 : 0);
        columns["seconds"].push_back(std::isfinite(row.seconds) ? std::round(row.seconds * 1e7) / 1e7 : 0.0);
        columns["value"].push_back(std::isnan(row.value) ? json(nullptr) : finite(row.value));
        columns["unit"].push_back(row.unit == "degrees" ? 1 : row.unit == "distance" ? 2 : 0);
        columns["output"].push_back(row.output);
        columns["over"].push_back(row.over);
        columns["count"].push_back(row.count);
        columns["text"].push_back(row.text);
    }
    const json data = {{"verdict", tally.verdict()},
                       {"counts", countsOf(tally.counts)},
                       {"worst", worstOf(tally.all)},
                       {"files", filesOf(tally)},
                       {"methods", methods},
                       {"units", units},
                       {"rows", columns},
                       {"chains", chains_},
                       {"chainsLeftOut", chainsLeftOut_},
                       {"full", full_.size()},
                       {"program", "zentreport " ZENT_VERSION}};

    out << "<script type=\"application/json\" id=\"data\">" << forScript(data) << "</script>\n";
    for (const Full& record : full_) {
        out << "<script type=\"application/json\" id=\"record" << record.rank.number << "\">" << record.line
            << "</script>\n";
    }
}

void Page::write(std::ostream& out, const Tally& tally) const {
    const std::string_view page = pageTemplate();
    const std::size_t mark = page.find(kDataMark);
    out << page.substr(0, mark);
    writeData(out, tally);
    out << page.substr(mark + kDataMark.size());
}

} // namespace report
