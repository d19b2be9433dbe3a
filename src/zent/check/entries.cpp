#include "zent/check/entries.h"

#include "zent/values/jsonAccess.h"

#include <utility>

namespace zent {

namespace {

std::vector<unsigned int> takeIndices(const json& entry) {
    std::vector<unsigned int> indices;
    const auto found = entry.is_object() ? entry.find("indices") : entry.end();
    if (found == entry.end()) {
        return indices;
    }
    if (!found->is_array()) {
        return found->get<std::vector<unsigned int>>(); // throws
    }
    indices.reserve(found->size());
    for (const json& index : *found) {
        indices.push_back(toUnsigned(index));
    }
    return indices;
}

json takeValue(json& entry) {
    const auto name = entry.is_object() ? entry.find("name") : entry.end();
    return std::move(name != entry.end() ? *name : entry.at("value"));
}

/// Files each entry of a record's list under its attribute number. The entries are used up.
template <class File>
void fileEntries(json& record, const char* key, File file) {
    const auto list = record.find(key);
    if (list == record.end()) {
        return;
    }
    for (json& entry : *list) {
        const auto attribute = toldAt({key, std::nullopt}, [&entry] { return toUnsigned(entry.at("attribute")); });
        const Place place{key, attribute};
        auto indices = toldAt(place, [&entry] { return takeIndices(entry); });
        file(attribute, Element(takeValue(entry), std::move(indices), place));
    }
}

} // namespace

std::string recordText(const json& record, const char* key) {
    const json& value = member(record, key);
    return value.is_string() ? value.get_ref<const std::string&>() : value.get<std::string>(); // the latter throws
}

RecordEntries takeEntries(json& record) {
    RecordEntries entries;
    fileEntries(record, "results", [&entries](unsigned int attribute, Element&& element) {
        addTo(entries.ports, attribute, std::move(element));
    });
    fileEntries(record, "arguments", [&entries](unsigned int attribute, Element&& element) {
        entries.args.add(attribute, std::move(element));
    });
    return entries;
}

} // namespace zent
