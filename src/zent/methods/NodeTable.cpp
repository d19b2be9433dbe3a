#include "zent/methods/NodeTable.h"

#include "zent/methods/rows.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <array>
#include <set>

namespace zent {

namespace {

using boost::algorithm::split;

std::vector<std::string> partsOf(const std::string& text, char separator) {
    std::vector<std::string> parts;
    split(parts, text, [separator](char letter) { return letter == separator; });
    for (std::string& part : parts) {
        boost::algorithm::trim(part);
    }
    parts.erase(std::remove(parts.begin(), parts.end(), std::string()), parts.end());
    return parts;
}

/// Takes a prefix or a suffix off; false where the text has none.
bool takeStart(std::string& text, std::string_view start) {
    const bool has = boost::algorithm::starts_with(text, start);
    text.erase(0, has ? start.size() : 0);
    return has;
}

bool takeEnd(std::string& text, std::string_view end) {
    const bool has = boost::algorithm::ends_with(text, end);
    text.erase(has ? text.size() - end.size() : text.size());
    return has;
}

/// What stands before a separator; the text keeps what follows. Empty where there is none.
std::string takeHead(std::string& text, char separator) {
    const std::size_t end = text.find(separator);
    if (end == std::string::npos) {
        return "";
    }
    std::string head = text.substr(0, end);
    text.erase(0, end + 1);
    return head;
}

NodeType readType(std::string text) {
    NodeType type;
    type.isDoubtful = takeEnd(text, "?");
    if (takeEnd(text, ")")) {
        const std::size_t start = text.find('(');
        type.driver = text.substr(start + 1);
        text.erase(start);
    }
    type.name = text;
    return type;
}

/// "{name plug plug}": the name, and the plugs into a list.
std::string readFunction(const std::string& text, std::vector<std::string>& plugs) {
    std::vector<std::string> words = partsOf(text.substr(1, text.size() - 2), ' ');
    plugs.assign(words.begin() + 1, words.end());
    return words.front();
}

Source readSource(std::string text) {
    Source source;
    if (text.front() == '{') {
        source.kind = Source::Kind::reader;
        source.isDoubtful = takeEnd(text, "?");
        source.ascends = takeEnd(text, ":asc");
        source.text = readFunction(text, source.plugs);
        return source;
    }
    if (takeStart(text, "=")) {
        source.kind = Source::Kind::literal;
        source.text = text;
        return source;
    }
    source.isDoubtful = takeEnd(text, "?");
    source.isAngle = takeEnd(text, ":rad");
    source.ascends = takeEnd(text, ":asc");
    source.onlyUsed = takeStart(text, "~");
    if (takeStart(text, "<")) {
        source.walk = "<";
    } else if (text.find("[>]") == std::string::npos) {
        source.walk = takeHead(text, '>');
    }
    const std::size_t bar = text.find('|');
    source.otherwise = bar == std::string::npos ? "" : text.substr(bar + 1);
    source.text = text.substr(0, bar);
    return source;
}

Guard readGuard(std::string text) {
    Guard guard;
    guard.isCondition = takeStart(text, "if ");
    if (takeEnd(text, ")")) {
        const std::size_t start = text.find(" (");
        guard.why = text.substr(start + 2);
        text.erase(start);
    }
    guard.isDoubtful = takeEnd(text, "?");
    if (text.front() == '{') {
        guard.test = Guard::Test::function;
        guard.plug = text.substr(1, text.size() - 2);
        return guard;
    }
    constexpr std::pair<const char*, Guard::Test> kStarts[] = {{"#", Guard::Test::count},
                                                               {"+", Guard::Test::connected},
                                                               {"-", Guard::Test::unconnected},
                                                               {"!", Guard::Test::exists}};
    for (const auto& [start, test] : kStarts) {
        if (takeStart(text, start)) {
            guard.test = test;
        }
    }
    if (guard.test == Guard::Test::equals) {
        guard.walk = takeHead(text, '>');
    }
    const std::size_t end = text.find_first_of("=<>");
    guard.plug = text.substr(0, end);
    if (end == std::string::npos) {
        return guard;
    }
    if (text[end] == '<') {
        guard.test = Guard::Test::countAtMost;
    } else if (text[end] == '>') {
        guard.test = Guard::Test::countAtLeast;
    }
    if (text.substr(end + 1) == "I") {
        guard.test = Guard::Test::identity;
        return guard;
    }
    for (const std::string& number : partsOf(text.substr(end + 1), ',')) {
        guard.numbers.push_back(std::stod(number) + (text[end] == '>' ? 1 : 0));
    }
    return guard;
}

template <class Read>
auto readList(const std::string& text, Read read) {
    std::vector<decltype(read(std::string()))> list;
    for (const std::string& part : partsOf(text, ';')) {
        list.push_back(read(part));
    }
    return list;
}

/// A row for each letter of "<RGB>", or the one row that has none.
void addRows(std::vector<NodeRow>& rows, const WrittenRow& written) {
    const std::string results = written.results;
    const std::size_t open = results.find('<');
    const std::string letters =
        open == std::string::npos ? "" : results.substr(open, results.find('>', open) + 1 - open);
    const auto withLetter = [&](const char* text, char letter) {
        return letters.empty() ? std::string(text)
                               : boost::algorithm::replace_all_copy(std::string(text), letters, std::string(1, letter));
    };
    for (const char letter : letters.empty() ? std::string("-") : letters.substr(1, letters.size() - 2)) {
        rows.push_back({written.method, readList(written.types, readType),
                        readList(withLetter(written.results, letter), readSource),
                        readList(withLetter(written.arguments, letter), readSource),
                        readList(written.guards, readGuard)});
    }
}

/// A plug as somebody asks for it who has no node: with an element in the place of each index.
std::string withElements(const std::string& plug) {
    std::string path;
    bool isIndex = false;
    for (const char letter : plug) {
        path += isIndex ? "" : std::string(1, letter);
        if (letter == '[') {
            isIndex = true;
            path += "0]";
        }
        isIndex = isIndex && letter != ']';
    }
    return path;
}

} // namespace

std::string Source::inWords() const {
    const std::string doubt = isDoubtful ? " ?" : "";
    switch (kind) {
    case Kind::literal:
        return "= " + text;
    case Kind::reader:
        return "from " + text + doubt;
    case Kind::plug:
        break;
    }
    const std::string start = walk.empty() ? "" : walk == "<" ? "the source of " : walk + ".";
    return start + text + (otherwise.empty() ? "" : ", or " + otherwise) + doubt;
}

bool NodeRow::isDoubtful() const {
    const auto doubtful = [](const auto& item) { return item.isDoubtful; };
    return std::any_of(results.begin(), results.end(), doubtful) ||
           std::any_of(arguments.begin(), arguments.end(), doubtful);
}

const std::vector<NodeRow>& nodeTable() {
    static const std::vector<NodeRow> rows = [] {
        std::vector<NodeRow> list;
        for (const WrittenRow* written = kWrittenRows; written->method != nullptr; ++written) {
            addRows(list, *written);
        }
        return list;
    }();
    return rows;
}

std::string nodeTypesInWords(const std::string& method) {
    std::string words;
    std::set<std::string> told;
    for (const NodeRow& row : nodeTable()) {
        if (row.method != method) {
            continue;
        }
        for (const NodeType& type : row.types) {
            if (told.insert(type.name).second) {
                words += (words.empty() ? "" : ", ") + type.name +
                         (type.driver.empty() ? "" : " (" + type.driver + ")") + (type.isDoubtful ? " ?" : "");
            }
        }
    }
    return words;
}

std::string walkedType(std::string_view walk, const NodeType& from) {
    if (walk == "effector") {
        return "ikEffector";
    }
    if (walk == "handle") {
        return "transform";
    }
    const bool isJoint = walk == "chain" || walk == "root" || walk == "rest";
    return isJoint ? "joint" : walk == "bend" || walk == "sine" ? from.driver : from.name;
}

std::vector<AskedPlug> askedPlugs() {
    std::vector<AskedPlug> plugs;
    std::set<std::pair<std::string, std::string>> seen;
    const auto add = [&](const std::string& type, std::string plug, bool isDoubtful) {
        isDoubtful = takeEnd(plug, "?") || isDoubtful;
        plug = withElements(plug);
        if (seen.emplace(type, plug).second) {
            plugs.push_back({type, plug, isDoubtful});
        }
    };
    for (const NodeRow& row : nodeTable()) {
        for (const NodeType& type : row.types) {
            for (const std::vector<Source>* list : {&row.results, &row.arguments}) {
                for (const Source& source : *list) {
                    if (source.kind == Source::Kind::plug) {
                        add(walkedType(source.walk, type), source.text, source.isDoubtful || type.isDoubtful);
                    }
                    for (const std::string& plug : source.plugs) {
                        add(type.name, plug, type.isDoubtful);
                    }
                }
            }
            for (const Guard& guard : row.guards) {
                std::vector<std::string> read{guard.plug};
                if (guard.test == Guard::Test::function) {
                    readFunction("{" + guard.plug + "}", read);
                }
                for (const std::string& plug : read) {
                    add(walkedType(guard.walk, type), plug, guard.isDoubtful || type.isDoubtful);
                }
            }
        }
    }
    return plugs;
}

} // namespace zent
