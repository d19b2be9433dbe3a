#include "zent/methods/Exporter.h"

#include "zent/check/Run.h"
#include "zent/math/require.h"
#include "zent/methods/Context.h"
#include "zent/methods/WholeFiles.h"
#include "zent/proxies/Registry.h"
#include "zent/values/nearestName.h"
#include "zent/values/Select.h"
#include "zent/values/ValueType.h"

#include <fmt/format.h>

#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

namespace zent {

namespace {

std::string quoted(const std::string& text) {
    return json(text).dump();
}

std::string shownEntry(std::size_t attribute, const MadeEntry& entry) {
    const std::string indices =
        entry.indices.empty() ? "" : fmt::format("\"indices\": [{}], ", fmt::join(entry.indices, ", "));
    return fmt::format("      {{\"attribute\": {}, {}{}}}", attribute, indices,
                       entry.name.empty() ? "\"value\": " + entry.value : "\"name\": " + quoted(entry.name));
}

MadeEntry entryOf(const Context& context, const FoundPlug& found) {
    return {found.indices, "", context.names.plugName(found.plug)};
}

std::vector<MadeEntry> plugEntries(const Context& context, const Source& source) {
    std::vector<MadeEntry> entries;
    if (source.walk == "<") {
        const MPlug plug = context.requiredPlug(source.text);
        entries.push_back(entryOf(context, {{}, shapePlug(plug)}));
        return entries;
    }
    const std::vector<SceneNode> nodes =
        source.walk.empty() ? std::vector<SceneNode>{context.node} : walk(context.node, source.walk);
    for (const SceneNode& node : nodes) {
        for (const FoundPlug& found : findPlugs(node, source.text, context.geometry)) {
            entries.push_back(entryOf(context, found));
        }
    }
    return entries;
}

std::vector<MadeEntry> entriesOf(const Context& context, const Source& source) {
    switch (source.kind) {
    case Source::Kind::literal:
        return {{{}, source.text, ""}};
    case Source::Kind::reader:
        return makeEntries(context, source);
    case Source::Kind::plug:
        break;
    }
    if (!source.otherwise.empty() && context.plug(source.text).isNull()) {
        return {{{}, source.otherwise, ""}};
    }
    return plugEntries(context, source);
}

std::string shownList(const Context& context, const std::vector<Source>& sources,
                      const std::vector<ValueInfo>& values) {
    std::string list;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const std::vector<MadeEntry> entries = entriesOf(context, sources[i]);
        if (entries.size() < values[i].least) {
            throw LeftOut(fmt::format("{} has {} entries, the method takes {}", sources[i].inWords(), entries.size(),
                                      values[i].least));
        }
        if (entries.size() > values[i].most) {
            throw LeftOut(fmt::format("{} has {} entries, the method takes {} at most", sources[i].inWords(),
                                      entries.size(), values[i].most));
        }
        for (const MadeEntry& entry : entries) {
            list += (list.empty() ? "" : ",\n") + shownEntry(i, entry);
        }
    }
    return list;
}

/// A record as it stands in the manifest.
std::string shownRecord(const Context& context) {
    const std::string results = shownList(context, context.row.results, context.method.results);
    const std::string arguments = shownList(context, context.row.arguments, context.method.arguments);
    return fmt::format("  {{\n    \"node_name\": {},\n    \"method\": {},\n    \"results\": [\n{}\n    ],\n"
                       "    \"arguments\": [\n{}\n    ]\n  }}",
                       quoted(context.names.nodeName(context.node)), quoted(context.row.method), results, arguments);
}

/// What one export gathers.
class Export {
public:
    explicit Export(const ExportSettings& settings) : settings_(settings), names_(settings.nameSpace) {
        for (MethodInfo& method : methodInfos()) {
            methods_.emplace(method.name, std::move(method));
        }
        for (const std::set<std::string>* list : {&settings.skip, &settings.only}) {
            requireMethods(*list);
        }
        for (const NodeRow& row : nodeTable()) {
            for (const NodeType& type : row.types) {
                rows_[type.name].push_back({&row, type.driver});
                drivers_.insert(type.driver);
            }
        }
    }

    void add(const SceneNode& node) {
        const std::string name = node.name();
        if (settings_.progress != nullptr) {
            settings_.progress->beginRecord(name, node.type());
        }
        if (!names_.holds(name)) {
            return;
        }
        ++outcome_.nodes;
        const auto found = rows_.find(node.type());
        if (found == rows_.end()) {
            if (drivers_.count(node.type()) == 0) { // else the node that it drives has the record
                ++withoutMethod_[node.type()];
            }
            return;
        }
        std::vector<const NodeRow*> rows;
        try {
            rows = rowsOf(node, found->second);
        } catch (const LeftOut& reason) {
            tell(node, node.type(), reason.what());
            return;
        }
        const bool isDeformer = !rows.empty() && methods_.at(rows.front()->method).isDeformer;
        if (!isDeformer) {
            return addRows(node, rows, 0);
        }
        const std::vector<unsigned int> geometries = indicesOf(node.plug("outputGeometry"));
        if (geometries.empty()) {
            tell(node, node.type(), "it deforms nothing");
        }
        for (const unsigned int geometry : geometries) {
            addRows(node, rowsOfShape(node, rows, geometry), geometry);
        }
    }

    ExportOutcome finish(WholeFiles& files) {
        outcome_.notes = notes();
        outcome_.manifest = manifest_.empty() ? "[]\n" : "[\n" + manifest_ + "\n]\n";
        files.add(settings_.resource, resource_.bytes());
        files.add(settings_.manifest, outcome_.manifest);
        if (!settings_.notes.empty()) {
            files.add(settings_.notes, outcome_.notes);
        }
        return outcome_;
    }

private:
    struct TypeRow {
        const NodeRow* row;
        std::string driver;
    };

    void requireMethods(const std::set<std::string>& list) const {
        std::vector<std::string> known;
        for (const auto& [name, method] : methods_) {
            known.push_back(name);
        }
        for (const std::string& name : list) {
            if (methods_.count(name) == 0) {
                fail("unknown method \"" + name + "\"" + nearestNameHint(name, known));
            }
        }
    }

    bool isAsked(const std::string& method) const {
        return settings_.skip.count(method) == 0 && (settings_.only.empty() || settings_.only.count(method) != 0);
    }

    /// The rows of a node's type, and of the type that drives it where it takes one.
    std::vector<const NodeRow*> rowsOf(const SceneNode& node, const std::vector<TypeRow>& typeRows) {
        std::vector<const NodeRow*> rows;
        std::string driver;
        for (const TypeRow& typeRow : typeRows) {
            if (!typeRow.driver.empty() && driver.empty()) {
                driver = node.sourceOf(node.type() == "ikHandle" ? "ikSolver" : "deformerData").type();
            }
        }
        bool hasDriver = false;
        for (const TypeRow& typeRow : typeRows) {
            if (typeRow.driver.empty() || typeRow.driver == driver) {
                rows.push_back(typeRow.row);
                hasDriver = hasDriver || !typeRow.driver.empty();
            }
        }
        if (!driver.empty() && !hasDriver) { // a handle is a transform all the same
            tell(node, node.type(), driver + " has no method");
        }
        return rows;
    }

    std::vector<const NodeRow*> rowsOfShape(const SceneNode& node, const std::vector<const NodeRow*>& rows,
                                            unsigned int geometry) {
        const std::string kind = shapeKind(findPlug(node, "outputGeometry[g]", geometry));
        std::vector<const NodeRow*> list;
        for (const NodeRow* row : rows) {
            if (methods_.at(row->method).results.front().type == kind) {
                list.push_back(row);
            }
        }
        if (list.empty()) {
            tell(node, node.type(),
                 kind.empty() ? fmt::format("outputGeometry[{}] has no geometry", geometry)
                              : fmt::format("no method deforms a {}", kind));
        }
        return list;
    }

    void addRows(const SceneNode& node, const std::vector<const NodeRow*>& rows, unsigned int geometry) {
        const auto used = [&](const NodeRow* row) {
            return std::any_of(row->results.begin(), row->results.end(), [&](const Source& source) {
                return source.onlyUsed && feeds(findPlug(node, source.text, geometry));
            });
        };
        const bool isUsed = std::any_of(rows.begin(), rows.end(), used);
        std::map<std::string, std::vector<std::pair<std::string, std::string>>> reasons; // by result
        std::set<std::string> made;
        bool isSkipped = false;
        for (const NodeRow* row : rows) {
            const Source& first = row->results.front();
            if (first.onlyUsed && (isUsed ? !used(row) : findPlug(node, first.text, geometry).isNull())) {
                continue;
            }
            if (!isAsked(row->method)) {
                isSkipped = true;
                continue;
            }
            const std::string& result = row->results.front().text;
            std::string reason;
            const Context context{node, *row, methods_.at(row->method), geometry, names_, resource_, findings_};
            switch (addRow(context, reason)) {
            case Made::record:
                made.insert(result);
                break;
            case Made::leftOut:
                reasons[result].emplace_back(row->method, reason);
                break;
            case Made::doesNotApply:
                break;
            }
        }
        if (made.empty() && reasons.empty() && !rows.empty() && !isSkipped) {
            tell(node, node.type(), "none of its methods fits what is connected to it");
        }
        for (const auto& [result, list] : reasons) {
            for (const auto& [method, reason] : list) {
                if (made.count(result) == 0) {
                    tell(node, method, reason);
                }
            }
        }
    }

    enum class Made { record, leftOut, doesNotApply };

    /// Whether the conditions under which the method is the node's hold.
    static bool applies(const Context& context) {
        const std::vector<Guard>& guards = context.row.guards;
        try {
            return std::none_of(guards.begin(), guards.end(), [&](const Guard& guard) {
                return guard.isCondition && violation(context, guard).has_value();
            });
        } catch (const LeftOut&) {
            return false;
        }
    }

    Made addRow(const Context& context, std::string& reason) {
        if (!applies(context)) {
            return Made::doesNotApply;
        }
        try {
            for (const Guard& guard : context.row.guards) {
                if (const auto why = guard.isCondition ? std::nullopt : violation(context, guard)) {
                    reason = *why;
                    return Made::leftOut;
                }
            }
            const std::string record = shownRecord(context);
            manifest_ += (manifest_.empty() ? "" : ",\n") + record;
            ++outcome_.records;
            ++records_[context.row.method];
            return Made::record;
        } catch (const std::exception& error) { // a LeftOut, or geometry that cannot be read
            reason = error.what();
            return Made::leftOut;
        }
    }

    void tell(const SceneNode& node, const std::string& method, const std::string& reason) {
        leftOut_ += fmt::format("  {} ({}), {}: {}\n", node.name(), node.type(), method, reason);
    }

    std::string notes() const {
        std::string text = fmt::format("{} records of {} nodes\n", outcome_.records, outcome_.nodes);
        std::string doubts;
        for (const auto& [method, count] : records_) {
            text += fmt::format("  {:>6} {}\n", count, method);
            for (const NodeRow& row : nodeTable()) {
                if (row.method == method && row.isDoubtful()) {
                    doubts += fmt::format("  {}: its plugs were not confirmed in Maya\n", method);
                    break;
                }
            }
        }
        text += doubts.empty() ? "" : "doubtful:\n" + doubts;
        text += leftOut_.empty() ? "" : "left out:\n" + leftOut_;
        text += withoutMethod_.empty() ? "" : "node types without a method:\n";
        for (const auto& [type, count] : withoutMethod_) {
            text += fmt::format("  {:>6} {}\n", count, type);
        }
        return text;
    }

    const ExportSettings& settings_;
    PlugNames names_;
    std::map<std::string, MethodInfo> methods_;
    std::unordered_map<std::string, std::vector<TypeRow>> rows_;
    ResourceWriter resource_;
    Findings findings_;
    std::string manifest_;
    std::string leftOut_;
    std::map<std::string, std::size_t> records_;
    std::set<std::string> drivers_;
    std::map<std::string, std::size_t> withoutMethod_;
    ExportOutcome outcome_;
};

/// Nodes in the order in which they come, each once.
class NodeList {
public:
    void add(const MObject& node) {
        const std::string key = SceneNode(node).name();
        if (seen_.insert(key).second) {
            nodes_.push_back(node);
        }
    }
    const MObject& operator[](std::size_t i) const { return nodes_[i]; }
    std::size_t size() const { return nodes_.size(); }

private:
    std::vector<MObject> nodes_;
    std::unordered_set<std::string> seen_;
};

void addHistory(NodeList& nodes) {
    for (std::size_t i = 0; i < nodes.size(); ++i) { // it grows meanwhile
        const MObject node = nodes[i];
        for (unsigned int child = 0; node.hasFn(MFn::kDagNode) && child < MFnDagNode(node).childCount(); ++child) {
            const MObject below = MFnDagNode(node).child(child);
            if (SceneNode(below).plug("translate").isNull()) { // a shape
                nodes.add(below);
            }
        }
        MPlugArray plugs;
        MFnDependencyNode(node).getConnections(plugs);
        for (unsigned int k = 0; k < plugs.length(); ++k) {
            if (const MPlug source = plugs[k].sourceWithConversion(); !source.isNull()) {
                nodes.add(source.node());
            }
        }
    }
}

} // namespace

ExportOutcome exportManifest(const ExportSettings& settings, WholeFiles& files) {
    namescope.clear();
    Export exporter(settings);
    if (!settings.onlySelected) {
        for (MItDependencyNodes nodes; !nodes.isDone(); nodes.next()) {
            exporter.add(SceneNode(nodes.thisNode()));
        }
        return exporter.finish(files);
    }
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    NodeList nodes;
    for (unsigned int i = 0; i < selection.length(); ++i) {
        MObject node;
        selection.getDependNode(i, node);
        nodes.add(node);
    }
    if (settings.withHistory) {
        addHistory(nodes);
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        exporter.add(SceneNode(nodes[i]));
    }
    return exporter.finish(files);
}

} // namespace zent
