#include "zent/methods/Lint.h"

#include "zent/check/CheckCall.h"
#include "zent/math/require.h"
#include "zent/methods/NodeTable.h"
#include "zent/methods/plugName.h"
#include "zent/methods/SceneNode.h"
#include "zent/proxies/Registry.h"
#include "zent/values/jsonAccess.h"
#include "zent/values/nearestName.h"
#include "zent/values/resource.h"
#include "zent/values/Select.h"
#include "zent/values/ValueType.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <set>

namespace zent {

namespace {

constexpr double kFullTurn = 6.2831854; // a little more than 2 pi, so that 2 pi itself is none
constexpr const char* kPassedOverMethod = "worldVisibility";

/// A type of the table of value types: "Float" of "Float[]".
std::string entryType(const ValueInfo& value) {
    return value.type.substr(0, value.type.find_first_of("[{"));
}

/// How many logical indices an entry needs.
std::size_t indexCount(const ValueInfo& value) {
    return static_cast<std::size_t>(std::count(value.type.begin(), value.type.end(), '{'));
}

struct NumbersType {
    const char* name;
    std::size_t count;
};
constexpr std::array<NumbersType, 5> kVectors{{{"Vec2", 2}, {"Vec3", 3}, {"Euler", 3}, {"Vec4", 4}, {"Mat4", 16}}};

std::size_t vectorSize(const std::string& type) {
    for (const NumbersType& vector : kVectors) {
        if (type == vector.name) {
            return vector.count;
        }
    }
    return 0;
}

template <class T>
std::size_t writtenSize(const T& record);
template <>
std::size_t writtenSize(const Mesh& mesh) {
    return 64 + 12 * mesh.points.size();
}
template <>
std::size_t writtenSize(const Curve& curve) {
    return 80 + 12 * curve.cv.size() + 4 * curve.knots.size();
}
template <>
std::size_t writtenSize(const Surface& surface) {
    return 92 + 12 * surface.cv.size() + 4 * (surface.knotsU.size() + surface.knotsV.size());
}
template <>
std::size_t writtenSize(const Lattice& lattice) {
    return 76 + 12 * lattice.points.size();
}

/// Why the bytes of a block cannot be a T; empty where they can.
template <class T>
std::string shapeProblem(const std::vector<char>& bytes) {
    T record;
    LoadResource(record, bytes);
    const std::size_t size = writtenSize(record);
    return bytes.size() == size
               ? ""
               : fmt::format("its {} bytes are not the {} that its counts ask for", bytes.size(), size);
}

template <std::size_t Size>
std::string listProblem(const std::vector<char>& bytes) {
    return bytes.size() % Size == 0 ? "" : fmt::format("its {} bytes are no multiple of {}", bytes.size(), Size);
}

std::string anyBytes(const std::vector<char>&) {
    return "";
}

struct BlockType {
    const char* name;
    const char* words;
    bool isShape; ///< a plug may hold it, too
    std::string (*problem)(const std::vector<char>& bytes);
};
constexpr std::array<BlockType, 11> kBlocks{{
    {"Mesh", "a mesh", true, shapeProblem<Mesh>},
    {"Curve", "a curve", true, shapeProblem<Curve>},
    {"Surface", "a surface", true, shapeProblem<Surface>},
    {"Lattice", "a lattice", true, shapeProblem<Lattice>},
    {"WeightMap", "a weight map", false, listProblem<8>},
    {"DeltaList", "a delta list", false, listProblem<16>},
    {"SkinWeightList", "a skin weight list", false, listProblem<12>},
    {"WireBindings", "a list of wire bindings", false, listProblem<44>},
    {"IndexList", "an index list", false, listProblem<4>},
    {"ByteCode", "byte code", false, anyBytes},
    {"Constants", "a list of constants", false, listProblem<kStoredValueSize>},
}};

const BlockType* blockType(const std::string& type) {
    const auto found = std::find_if(kBlocks.begin(), kBlocks.end(), [&](const auto& row) { return type == row.name; });
    return found == kBlocks.end() ? nullptr : &*found;
}

std::string shown(const json& value) {
    std::string text = value.dump(-1, ' ', false, json::error_handler_t::replace);
    return text.size() > 40 ? text.substr(0, 37) + "..." : text;
}

/// What is wrong with a literal of a type; empty for nothing.
std::string literalProblem(const json& value, const std::string& type) {
    const std::size_t size = vectorSize(type);
    if (size > 0) {
        const bool fits = value.is_array() && value.size() == size &&
                          std::all_of(value.begin(), value.end(), [](const json& item) { return item.is_number(); });
        return fits ? "" : fmt::format("{} numbers expected, not {}", size, shown(value));
    }
    if (type == "Bool") {
        return value.is_boolean() ? "" : "true or false expected, not " + shown(value);
    }
    return value.is_number() ? "" : "a number expected, not " + shown(value);
}

std::string rangeProblem(const std::vector<double>& numbers) {
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        if (!(numbers[i - 1] <= numbers[i])) {
            return fmt::format("the list should ascend: entry {} is {}, entry {} is {}", i - 1, numbers[i - 1], i,
                               numbers[i]);
        }
    }
    return "";
}

bool hasLargeAngle(const json& value) {
    return value.is_array() ? std::any_of(value.begin(), value.end(), hasLargeAngle)
                            : value.is_number() && std::abs(value.get<double>()) > kFullTurn;
}

/// The places of the entries that have one attribute number.
struct Entry {
    const json* value;
    std::vector<unsigned int> indices;
};
using ListEntries = std::map<unsigned int, std::vector<Entry>>;

class Linter {
public:
    explicit Linter(const LintSettings& settings) : hasScene_(settings.hasScene) {
        for (MethodInfo& method : methodInfos()) {
            names_.push_back(method.name);
            methods_.emplace(method.name, std::move(method));
        }
        for (const NodeRow& row : nodeTable()) {
            rows_[row.method].push_back(&row);
        }
        if (settings.resource) {
            hasBlocks_ = true;
            const auto count = readResourceBlocks(*settings.resource, [this](unsigned int, std::vector<char>&& bytes) {
                blocks_.push_back(std::move(bytes));
            });
            if (!count) {
                fail("cannot open resource file \"" + *settings.resource + "\"");
            }
        }
    }

    std::vector<Mistake> take() { return std::move(mistakes_); }

    void checkRecord(std::size_t place, const json& record) {
        at_ = {};
        at_.record = place;
        if (!record.is_object()) {
            return tell("a record should be an object, not " + shown(record));
        }
        at_.node = text(record, "node_name");
        at_.method = text(record, "method");
        checkKeys(record, {"node_name", "method", "results", "arguments"});
        if (at_.method == kPassedOverMethod || at_.method.empty()) {
            return;
        }
        const auto method = methods_.find(at_.method);
        if (method == methods_.end()) {
            return tell("unknown method \"" + at_.method + "\"" + nearestNameHint(at_.method, names_));
        }
        const std::vector<const NodeRow*>& rows = rows_.at(at_.method);
        checkList(record, "results", method->second.results, rows.front()->results);
        checkResultPlugs(record, rows);
        checkList(record, "arguments", method->second.arguments, rows.front()->arguments);
    }

private:
    void tell(const std::string& problem) {
        mistakes_.push_back(at_);
        mistakes_.back().text = problem;
    }

    std::string text(const json& record, const char* key) {
        const json& value = member(record, key);
        if (value.is_string()) {
            return value.get<std::string>();
        }
        tell(value.is_null() ? fmt::format("no \"{}\"", key)
                             : fmt::format("\"{}\" should be a text, not {}", key, shown(value)));
        return "";
    }

    /// A key that looks like one of those that are read. Others are nobody's business.
    void checkKeys(const json& object, const std::vector<std::string>& keys) {
        for (const auto& [key, value] : object.items()) {
            if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
                const std::string hint = nearestNameHint(key, keys);
                if (!hint.empty()) {
                    tell("nobody reads \"" + key + "\"" + hint);
                }
            }
        }
    }

    void checkList(const json& record, const char* list, const std::vector<ValueInfo>& values,
                   const std::vector<Source>& sources) {
        at_.list = list;
        const ListEntries entries = entriesOf(member(record, list));
        for (unsigned int i = 0; i < values.size(); ++i) {
            at_.attribute = i;
            const auto found = entries.find(i);
            checkValue(found == entries.end() ? std::vector<Entry>() : found->second, values[i], sources[i]);
        }
        for (auto surplus = entries.lower_bound(static_cast<unsigned>(values.size())); surplus != entries.end();
             ++surplus) {
            at_.attribute = surplus->first;
            tell(fmt::format("the method has no such attribute; its last is {}", values.size() - 1));
        }
        checkLengths(entries, sources);
        at_.attribute.reset();
        at_.list.clear();
    }

    ListEntries entriesOf(const json& list) {
        ListEntries entries;
        at_.attribute.reset();
        if (!list.is_null() && !list.is_array() && !list.is_object()) {
            tell("should be a list of entries, not " + shown(list));
            return entries;
        }
        for (const json& entry : list) {
            at_.attribute.reset();
            if (!entry.is_object()) {
                tell("an entry should be an object, not " + shown(entry));
                continue;
            }
            const json& attribute = member(entry, "attribute");
            if (!attribute.is_number_unsigned() || attribute.get<std::uint64_t>() > kMostAttributes) {
                tell("an entry's \"attribute\" should be a whole number, not " + shown(attribute));
                continue;
            }
            at_.attribute = attribute.get<unsigned>();
            checkKeys(entry, {"attribute", "indices", "name", "value"});
            std::vector<unsigned int> indices;
            if (entry.contains("indices") && !readIndices(entry["indices"], indices)) {
                tell("\"indices\" should be a list of whole numbers, not " + shown(entry["indices"]));
                continue;
            }
            const bool hasName = entry.contains("name");
            if (!hasName && !entry.contains("value")) {
                tell("an entry needs a \"name\" or a \"value\"");
                continue;
            }
            if (hasName && entry.contains("value")) {
                tell("an entry has a \"name\" and a \"value\": nobody reads the value");
            }
            entries[*at_.attribute].push_back({&entry[hasName ? "name" : "value"], std::move(indices)});
        }
        return entries;
    }

    static bool readIndices(const json& list, std::vector<unsigned int>& indices) {
        for (const json& index : list) {
            if (!list.is_array() || !index.is_number_unsigned() || index.get<std::uint64_t>() > 0xffffffffU) {
                return false;
            }
            indices.push_back(index.get<unsigned int>());
        }
        return list.is_array();
    }

    void checkValue(const std::vector<Entry>& entries, const ValueInfo& value, const Source& source) {
        if (entries.size() < value.least || entries.size() > value.most) {
            const std::string least = value.least == value.most ? "" : value.least > 0 ? "at least " : "at most ";
            tell(entries.empty() ? "missing"
                                 : fmt::format("{} entries, {}{} expected", entries.size(), least,
                                               entries.size() < value.least ? value.least : value.most));
        }
        const std::string type = entryType(value);
        std::set<std::vector<unsigned int>> keys;
        std::vector<double> numbers;
        for (const Entry& entry : entries) {
            checkEntry(*entry.value, type, source.isAngle || type == "Euler");
            const std::size_t needed = indexCount(value);
            if (entry.indices.size() < needed) {
                tell(fmt::format("an entry needs {} logical {}, it has {}", needed, needed == 1 ? "index" : "indices",
                                 entry.indices.size()));
            } else if (needed > 0 &&
                       !keys.emplace(entry.indices.begin(), entry.indices.begin() + static_cast<std::ptrdiff_t>(needed))
                            .second) {
                tell(fmt::format("indices [{}] stand twice: only the last entry counts",
                                 fmt::join(entry.indices, ", ")));
            }
            if (source.ascends) {
                addNumbers(*entry.value, numbers);
            }
        }
        if (const std::string problem = rangeProblem(numbers); !problem.empty()) {
            tell(problem);
        }
    }

    void checkEntry(const json& value, const std::string& type, bool isAngle) {
        const BlockType* block = blockType(type);
        std::string problem;
        if (value.is_string()) {
            problem =
                block != nullptr && !block->isShape
                    ? fmt::format("a block expected, {{\"id\": N}} of {}, not the plug {}", block->words, shown(value))
                    : plugProblem(value.get<std::string>());
        } else if (block == nullptr) {
            problem = literalProblem(value, type);
            if (problem.empty() && isAngle && hasLargeAngle(value)) {
                problem = "more than a full turn, are these degrees? Radians are read: " + shown(value);
            }
        } else if (!value.is_object() || !member(value, "id").is_number_unsigned()) {
            problem = fmt::format("{}{{\"id\": N}} of {} expected, not {}", block->isShape ? "a plug, or " : "",
                                  block->words, shown(value));
        } else {
            problem = blockProblem(value["id"].get<std::uint64_t>(), *block);
        }
        if (!problem.empty()) {
            tell(problem);
        }
    }

    std::string blockProblem(std::uint64_t id, const BlockType& type) {
        if (!hasBlocks_) {
            return "";
        }
        if (id >= blocks_.size()) {
            return fmt::format("no block {}: the resource file has {}", id, blocks_.size());
        }
        const auto [first, isNew] = readAs_.emplace(id, &type);
        if (!isNew && first->second != &type) {
            return fmt::format("block {} is read as {} here, as {} before", id, type.words, first->second->words);
        }
        std::string problem;
        try {
            problem = type.problem(blocks_[id]);
        } catch (const std::exception& error) {
            problem = error.what();
        }
        return problem.empty() ? "" : fmt::format("block {} is not {}: {}", id, type.words, problem);
    }

    std::string plugProblem(const std::string& name) const {
        std::string problem = plugNameProblem(name);
        if (problem.empty() && hasScene_) {
            problem = plugLookUpProblem(name);
            return problem.empty() ? elementProblem(selectPlug(name)) : problem;
        }
        return problem;
    }

    /// An element that a multi does not have reads as its default value, without an error.
    std::string elementProblem(const MPlug& plug) const {
        for (MPlug at = plug; !at.isNull(); at = at.isElement() ? at.array() : at.parent()) {
            if (!at.isElement()) {
                continue;
            }
            const MPlug multi = at.array();
            const auto [known, isNew] = elements_.try_emplace(toStd(multi.name()));
            if (isNew) {
                const std::vector<unsigned int> indices = indicesOf(multi);
                known->second.insert(indices.begin(), indices.end());
            }
            if (known->second.count(at.logicalIndex()) == 0) {
                return fmt::format("\"{}\" has no element {}: what is read is a default value", known->first,
                                   at.logicalIndex());
            }
        }
        return "";
    }

    /// The numbers of an entry, as far as they can be known.
    void addNumbers(const json& value, std::vector<double>& numbers) const {
        if (value.is_number()) {
            numbers.push_back(value.get<double>());
        } else if (value.is_string() && hasScene_ && plugProblem(value.get<std::string>()).empty()) {
            numbers.push_back(static_cast<double>(float_value(selectPlug(value.get<std::string>()))));
        } else if (value.is_object() && member(value, "id").is_number_unsigned() &&
                   value["id"].get<std::uint64_t>() < blocks_.size()) {
            std::vector<unsigned int> list;
            LoadResource(list, blocks_[value["id"].get<std::uint64_t>()]);
            numbers.insert(numbers.end(), list.begin(), list.end());
        }
    }

    /// Lists of one multi, or of one chain, go entry by entry.
    void checkLengths(const ListEntries& entries, const std::vector<Source>& sources) {
        std::map<std::string, unsigned int> firstOf;
        for (unsigned int i = 0; i < sources.size(); ++i) {
            const Source& source = sources[i];
            const std::size_t open = source.text.find('[');
            const bool isList =
                source.kind == Source::Kind::plug &&
                source.text.compare(open == std::string::npos ? 0 : open, 2, "[g") != 0 &&
                (source.walk == "chain" || (open != std::string::npos && source.text.find("].") != std::string::npos &&
                                            source.text.find('#') == std::string::npos));
            if (!isList) {
                continue;
            }
            const auto [first, isNew] =
                firstOf.emplace(source.walk == "chain" ? "chain" : source.text.substr(0, open), i);
            const auto count = [&entries](unsigned int attribute) {
                const auto found = entries.find(attribute);
                return found == entries.end() ? std::size_t{0} : found->second.size();
            };
            if (!isNew && count(i) != count(first->second)) {
                at_.attribute = i;
                tell(fmt::format("{} entries, attribute {} has {}", count(i), first->second, count(first->second)));
            }
        }
    }

    void checkResultPlugs(const json& record, const std::vector<const NodeRow*>& rows) {
        at_.list = "results";
        const json& list = member(record, "results");
        for (const json& entry : list.is_structured() ? list : json::array()) {
            const json* name = entry.is_object() && entry.contains("name") ? &entry["name"] : nullptr;
            if (name == nullptr || !name->is_string() || !member(entry, "attribute").is_number_unsigned()) {
                continue;
            }
            const auto attribute = entry["attribute"].get<std::uint64_t>();
            if (attribute >= rows.front()->results.size()) {
                continue;
            }
            std::vector<std::string> known;
            for (const NodeRow* row : rows) {
                known.push_back(lastAttribute(row->results[attribute].text));
            }
            const std::string plug = lastAttribute(longName(name->get<std::string>()));
            if (std::find(known.begin(), known.end(), plug) == known.end()) {
                at_.attribute = static_cast<unsigned>(attribute);
                tell(fmt::format("{} is no plug of the method, whose result is on \"{}\"", shown(*name),
                                 fmt::join(known, "\" or \"")));
            }
        }
        at_.attribute.reset();
        at_.list.clear();
    }

    std::string longName(const std::string& name) const {
        return hasScene_ && plugProblem(name).empty() ? longPlugName(selectPlug(name)) : name;
    }

    static constexpr std::uint64_t kMostAttributes = 1U << 16;

    bool hasScene_;
    bool hasBlocks_ = false;
    std::vector<std::vector<char>> blocks_;
    std::map<std::uint64_t, const BlockType*> readAs_;
    std::vector<std::string> names_;
    std::map<std::string, MethodInfo> methods_;
    std::map<std::string, std::vector<const NodeRow*>> rows_;
    mutable std::map<std::string, std::set<unsigned int>> elements_; ///< of the multis that were asked for
    Mistake at_;
    std::vector<Mistake> mistakes_;
};

} // namespace

std::string Mistake::inWords() const {
    std::string place = fmt::format("record {}", record);
    if (!node.empty() || !method.empty()) {
        place += fmt::format(", {}({})", node, method);
    }
    if (!list.empty()) {
        place += ", " + list;
    }
    if (attribute) {
        place += fmt::format(", attribute {}", *attribute);
    }
    return place + ": " + text;
}

std::vector<Mistake> lint(const json& manifest, const LintSettings& settings) {
    if (!manifest.is_structured()) {
        fail("a manifest should be a list of records");
    }
    Linter linter(settings);
    std::size_t place = 0;
    for (const json& record : manifest) {
        linter.checkRecord(place++, record);
    }
    return linter.take();
}

} // namespace zent
