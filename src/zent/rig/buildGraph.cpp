#include "zent/rig/buildGraph.h"

#include "zent/check/entries.h"
#include "zent/methods/NodeTable.h"
#include "zent/methods/plugName.h"
#include "zent/methods/SceneNode.h"
#include "zent/proxies/Registry.h"
#include "zent/rig/Upstream.h"
#include "zent/values/Log.h"
#include "zent/values/Select.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <maya/MFn.h>
#include <maya/MFnDagNode.h>

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <unordered_set>
#include <utility>

namespace zent::rig {

namespace {

constexpr std::size_t kMatrix = 16;

/// An argument's entry that a plug gives.
struct Argument {
    unsigned int attribute;
    MPlug plug;
    Slot slot;
    std::string name; ///< as the record has it
};

/// A record on its way into the graph.
struct Draft {
    RecordInfo info;
    std::unique_ptr<Proxy> proxy;
    std::unique_ptr<Evaluation> evaluation;
    std::vector<Argument> arguments;
    std::vector<Edge> edges; ///< their sources are drafts
};

/// A result's entry, by its plug.
struct Made {
    MPlug plug;
    std::uint32_t draft;
    std::uint32_t attribute;
    std::size_t position;
};

/// Plugs by their names, which need not tell two plugs apart.
template <class T>
class ByPlug {
public:
    T* find(const MPlug& plug) {
        const auto found = entries_.find(plug.name().asChar());
        if (found != entries_.end()) {
            for (auto& [key, value] : found->second) {
                if (key == plug) {
                    return &value;
                }
            }
        }
        return nullptr;
    }
    void add(const MPlug& plug, T value) { entries_[plug.name().asChar()].emplace_back(plug, std::move(value)); }

private:
    std::unordered_map<std::string, std::vector<std::pair<MPlug, T>>> entries_;
};

std::string shortName(const MPlug& plug) {
    const std::string name = plug.name().asChar();
    return name.substr(name.rfind('|') + 1); // the whole name where there is no "|"
}

class Builder {
public:
    Graph build(json manifest);

private:
    void readRecord(json& record, std::size_t index);
    void bind(Draft& draft, const Arguments& args);
    void addOutputs(std::uint32_t draft, const std::vector<Port>& ports);
    void addMade(std::uint32_t draft, unsigned int attribute, std::size_t position, const MPlug& plug,
                 const std::string& name);

    void connect(std::uint32_t draft, const Argument& argument);
    void follow(std::uint32_t draft, const Argument& argument, MPlug plug, Target target, float factor, bool isWhole);
    bool takeMade(std::uint32_t draft, const Argument& argument, const MPlug& plug, const Target& target, float factor);
    void addEdge(std::uint32_t draft, const Argument& argument, const Made& made, std::optional<unsigned int> child,
                 const Target& target, float factor);
    void addInput(std::uint32_t draft, const MPlug& plug, const Target& target, float factor, bool isFar);
    std::uint32_t inputAt(const MPlug& plug, const Target& target);

    const Made* madeAt(const MPlug& plug);
    bool addMatrix(const MPlug& plug);
    bool addRecord(const MPlug& plug, const char* method, std::vector<std::pair<MPlug, json>> values);

    std::vector<std::uint32_t> inOrder();
    void tellGaps();

    Graph graph_;
    std::deque<Draft> drafts_;
    ByPlug<Made> made_;
    ByPlug<std::uint32_t> inputs_;
    ByPlug<bool> refused_;                                                     ///< matrices that no record is added for
    std::map<std::string, std::map<std::string, std::set<std::string>>> gaps_; ///< by node type and plug: who reads it
    std::set<std::string> knownTypes_;
};

// ---- reading the records
// ---------------------------------------------------------------------------------------------

void Builder::readRecord(json& record, std::size_t index) {
    std::string node;
    std::string method;
    try {
        node = recordText(record, "node_name");
        method = recordText(record, "method");
        const auto maker = proxyMakers().find(method);
        if (maker == proxyMakers().end()) {
            graph_.notes.push_back(fmt::format("{}({}) is left out: there is no such method", node, method));
            return;
        }
        const RecordEntries entries = takeEntries(record);
        Draft draft;
        draft.info.node = node;
        draft.info.method = method;
        draft.info.index = index;
        draft.proxy = maker->second();
        bind(draft, entries.args);
        drafts_.push_back(std::move(draft));
        addOutputs(static_cast<std::uint32_t>(drafts_.size() - 1), entries.ports);
    } catch (const std::exception& error) {
        graph_.notes.push_back(fmt::format("{}({}) is left out: {}", node, method, error.what()));
    }
}

void Builder::bind(Draft& draft, const Arguments& args) {
    draft.evaluation = dynamic_cast<Bindable&>(*draft.proxy).bind(args);
    for (unsigned int attribute = 0; attribute < args.ports().size(); ++attribute) {
        const std::vector<Element>& elements = args.get(attribute).elements();
        for (std::size_t position = 0; position < elements.size(); ++position) {
            const Element& element = elements[position];
            if (!element.isPlug()) {
                continue;
            }
            const Slot slot = draft.evaluation->argument(attribute, {position, element.indices()});
            if (slot.kind != Slot::Kind::none) {
                draft.arguments.push_back({attribute, findPlug(element.getString()), slot, element.getString()});
            }
        }
    }
    // Of entries that stand in one place the last one counts.
    std::unordered_set<void*> taken;
    std::vector<Argument>& arguments = draft.arguments;
    const auto isOvertaken = [&taken](const Argument& argument) {
        return argument.slot.kind != Slot::Kind::bit && !taken.insert(argument.slot.place).second;
    };
    arguments.erase(arguments.begin(), std::remove_if(arguments.rbegin(), arguments.rend(), isOvertaken).base());
}

void Builder::addOutputs(std::uint32_t draft, const std::vector<Port>& ports) {
    for (unsigned int attribute = 0; attribute < ports.size(); ++attribute) {
        const std::vector<Element>& elements = ports[attribute].elements();
        for (std::size_t position = 0; position < elements.size(); ++position) {
            if (!elements[position].isPlug()) {
                continue;
            }
            const std::string& name = elements[position].getString();
            if (const MPlug plug = findPlug(name); plug.isNull()) {
                graph_.notes.push_back(fmt::format("{}: its result {} is not in the scene, so that nothing reads it",
                                                   inWords(drafts_[draft].info), name));
            } else {
                addMade(draft, attribute, position, plug, name);
            }
        }
    }
}

void Builder::addMade(std::uint32_t draft, unsigned int attribute, std::size_t position, const MPlug& plug,
                      const std::string& name) {
    if (const Made* earlier = made_.find(plug)) {
        graph_.notes.push_back(fmt::format("{}: {} is a result of {}, too, which counts", inWords(drafts_[draft].info),
                                           name, inWords(drafts_[earlier->draft].info)));
        return;
    }
    made_.add(plug, {plug, draft, attribute, position});
    graph_.outputs.push_back({draft, attribute, position});
    graph_.outputInfos.push_back({name, Type::numbers, 0});
    drafts_[draft].info.outputs.push_back(graph_.outputs.size() - 1);
    const auto index = static_cast<std::uint32_t>(graph_.outputs.size() - 1);
    for (const std::string& alias : {name, std::string(plug.name().asChar()), shortName(plug)}) {
        graph_.outputNames.emplace(alias, PlugId{index, 0, 0});
    }
    const std::vector<MPlug> children = numbersIn(plug);
    for (std::uint32_t i = 0; i < children.size(); ++i) {
        for (const std::string& alias : {std::string(children[i].name().asChar()), shortName(children[i]),
                                         name + "." + lastAttribute(longPlugName(children[i]))}) {
            graph_.outputNames.emplace(alias, PlugId{index, i, 1});
        }
    }
}

// ---- following plugs
// -------------------------------------------------------------------------------------------------

const Made* Builder::madeAt(const MPlug& plug) {
    if (const Made* made = made_.find(plug)) {
        return made;
    }
    return addMatrix(plug) ? made_.find(plug) : nullptr;
}

void Builder::connect(std::uint32_t draft, const Argument& argument) {
    Target target{argument.slot, 0, argument.slot.kind == Slot::Kind::floats ? argument.slot.size : 1U, false};
    follow(draft, argument, argument.plug, target, 1.0f, true);
}

/// An edge where a record makes the plug, or the compound that it is a child of.
bool Builder::takeMade(std::uint32_t draft, const Argument& argument, const MPlug& plug, const Target& target,
                       float factor) {
    if (const Made* made = madeAt(plug)) {
        addEdge(draft, argument, *made, std::nullopt, target, factor);
        return true;
    }
    const MPlug parent = plug.isChild() ? plug.parent() : MPlug();
    const Made* made = parent.isNull() ? nullptr : made_.find(parent);
    if (made == nullptr) {
        return false;
    }
    unsigned int place = 0;
    while (place < parent.numChildren() && parent.child(place) != plug) {
        ++place;
    }
    addEdge(draft, argument, *made, place, target, factor);
    return true;
}

void Builder::addEdge(std::uint32_t draft, const Argument& argument, const Made& made,
                      std::optional<unsigned int> child, const Target& target, float factor) {
    drafts_[draft].edges.push_back({made.draft, made.attribute, made.position, child.value_or(0), !child, factor,
                                    target, shortName(made.plug), argument.name});
}

void Builder::follow(std::uint32_t draft, const Argument& argument, MPlug plug, Target target, float factor,
                     bool isWhole) {
    bool isFar = false;
    std::unordered_set<std::string> passed; // a way may lead in a circle over unit conversions
    for (;;) {
        if (takeMade(draft, argument, plug, target, factor)) {
            return;
        }
        std::optional<Step> step = stepUp(plug);
        if (!step && target.count == kMatrix) {
            if (const std::optional<MPlug> above = matrixAbove(plug)) {
                step = Step{*above};
            }
        }
        if (!step || !passed.insert(plug.name().asChar()).second) {
            break;
        }
        isFar = true;
        plug = step->plug;
        factor *= step->factor;
        target.pointsOnly = target.pointsOnly || step->pointsOnly;
    }
    const std::vector<MPlug> children = isWhole ? numbersIn(plug) : std::vector<MPlug>();
    if (target.count >= 2 && target.count <= children.size()) {
        for (unsigned int i = 0; i < target.count; ++i) {
            Target part = target;
            part.first = target.first + i;
            part.count = 1;
            follow(draft, argument, children[i], part, factor, false);
        }
        return;
    }
    addInput(draft, plug, target, factor, isFar);
}

std::uint32_t Builder::inputAt(const MPlug& plug, const Target& target) {
    if (const std::uint32_t* known = inputs_.find(plug)) {
        return *known;
    }
    const auto index = static_cast<std::uint32_t>(graph_.inputs.size());
    Input input;
    PlugInfo info{shortName(plug), Type::numbers, 0};
    std::vector<MPlug> children;
    switch (target.slot.kind) {
    case Slot::Kind::mesh:
        info.type = Type::mesh;
        info.size = static_cast<Mesh*>(target.slot.place)->points.size();
        break;
    case Slot::Kind::curve:
        info.type = Type::curve;
        info.size = static_cast<Curve*>(target.slot.place)->cv.size();
        break;
    case Slot::Kind::surface:
        info.type = Type::surface;
        info.size = static_cast<Surface*>(target.slot.place)->cv.size();
        break;
    case Slot::Kind::lattice:
        info.type = Type::lattice;
        info.size = static_cast<Lattice*>(target.slot.place)->points.size();
        break;
    default:
        children = numbersIn(plug);
        input.numbers = valuesOf(plug, target.count);
        info.size = input.numbers.size();
    }
    graph_.inputs.push_back(std::move(input));
    graph_.inputInfos.push_back(info);
    inputs_.add(plug, index);
    for (const std::string& alias : {info.name, std::string(plug.name().asChar())}) {
        graph_.inputNames.emplace(alias, PlugId{index, 0, static_cast<std::uint32_t>(info.size)});
    }
    for (std::uint32_t i = 0; i < children.size(); ++i) {
        for (const std::string& alias : {std::string(children[i].name().asChar()), shortName(children[i]),
                                         info.name + "." + lastAttribute(longPlugName(children[i]))}) {
            graph_.inputNames.emplace(alias, PlugId{index, i, 1});
        }
    }
    return index;
}

void Builder::addInput(std::uint32_t draft, const MPlug& plug, const Target& target, float factor, bool isFar) {
    MPlug whole = plug;
    unsigned int first = 0;
    if (const MPlug parent = plug.isChild() && !target.slot.isShape() ? plug.parent() : MPlug(); !parent.isNull()) {
        const std::vector<MPlug> siblings = numbersIn(parent);
        if (const auto place = std::find(siblings.begin(), siblings.end(), plug); place != siblings.end()) {
            whole = parent;
            first = static_cast<unsigned int>(place - siblings.begin());
        }
    }
    std::uint32_t index = 0;
    try {
        index = inputAt(whole, target);
    } catch (const std::exception&) { // a plug that holds nothing of that kind: the argument stays as it was read
        return;
    }
    Input& input = graph_.inputs[index];
    if (target.slot.isShape() ? graph_.inputInfos[index].type != Type::numbers
                              : first + target.count <= input.numbers.size()) {
        input.uses.push_back({draft, first, factor, target});
    }
    if (isFar) {
        const std::string type = SceneNode(plug.node()).type();
        if (knownTypes_.count(type) == 0) {
            gaps_[type][shortName(plug)].insert(inWords(drafts_[draft].info));
        }
    }
}

// ---- matrices of the DAG
// ---------------------------------------------------------------------------------------------

json literalOf(const MPlug& plug, const json& otherwise) {
    if (plug.isNull()) {
        return otherwise;
    }
    if (otherwise.is_number_integer()) {
        return plug.asInt();
    }
    if (otherwise.is_boolean()) {
        return plug.asBool();
    }
    json numbers = json::array();
    for (const float number : valuesOf(plug, otherwise.size())) {
        numbers.push_back(static_cast<double>(number));
    }
    return numbers;
}

/// Adds the record that makes a matrix of a DAG node where the manifest has none; false where there is no such one.
bool Builder::addMatrix(const MPlug& plug) {
    const MObject object = plug.node();
    if (!object.hasFn(MFn::kDagNode) || plug.isDestination() || refused_.find(plug) != nullptr) {
        return false;
    }
    const SceneNode node(object);
    const auto matrix = [&node](const char* attribute) {
        const MPlug whole = node.plug(attribute);
        return whole.isNull() || !whole.isArray() ? whole : whole.elementByLogicalIndex(0);
    };
    const MPlug own = matrix("parentMatrix");
    const MPlug parent = own.isNull() ? worldMatrixAbove(object).value_or(MPlug()) : own;
    const json zero = {0.0, 0.0, 0.0};
    const json one = {1.0, 1.0, 1.0};
    json identity = json::array();
    for (std::size_t i = 0; i < kMatrix; ++i) {
        identity.push_back(i % 5 == 0 ? 1.0 : 0.0);
    }
    const std::string name = longPlugName(plug);
    if (name == "inverseMatrix") {
        return addRecord(plug, "inverseLocal", {{matrix("matrix"), identity}});
    }
    if (name == "worldInverseMatrix[0]") {
        return addRecord(plug, "inverseWorld", {{matrix("worldMatrix"), identity}});
    }
    if (name == "parentInverseMatrix[0]") {
        return addRecord(plug, "inverseMatrix", {{parent, identity}});
    }
    if (name == "worldMatrix[0]" && !matrix("matrix").isNull()) {
        const MPlug inherits = node.plug("inheritsTransform");
        const bool inheritsIt = inherits.isNull() || inherits.asBool();
        return inheritsIt && addRecord(plug, "worldMatrix", {{parent, identity}, {matrix("matrix"), identity}});
    }
    if (name != "matrix" || node.plug("translate").isNull()) {
        return false;
    }
    if (!node.plug("jointOrient").isNull()) {
        return addRecord(plug, "joint",
                         {{node.plug("translate"), zero},
                          {node.plug("rotate"), zero},
                          {node.plug("scale"), one},
                          {node.plug("rotateOrder"), 0},
                          {node.plug("jointOrient"), zero},
                          {node.plug("inverseScale"), one},
                          {node.plug("segmentScaleCompensate"), true}});
    }
    return addRecord(plug, "transform",
                     {{node.plug("translate"), zero},
                      {node.plug("rotate"), zero},
                      {node.plug("rotateOrder"), 0},
                      {node.plug("scale"), one},
                      {node.plug("shear"), zero},
                      {node.plug("rotatePivot"), zero},
                      {node.plug("scalePivot"), zero},
                      {node.plug("rotatePivotTranslate"), zero},
                      {node.plug("scalePivotTranslate"), zero}});
}

bool Builder::addRecord(const MPlug& plug, const char* method, std::vector<std::pair<MPlug, json>> values) {
    constexpr float kTolerance = 1e-3f;
    refused_.add(plug, true); // until it is right, and while its own arguments are followed
    Arguments args;
    for (unsigned int i = 0; i < values.size(); ++i) {
        args.add(i, Element(literalOf(values[i].first, values[i].second)));
    }
    Draft draft;
    draft.info.node = SceneNode(plug.node()).name();
    draft.info.method = method;
    draft.proxy = proxyMakers().at(method)();
    draft.evaluation = dynamic_cast<Bindable&>(*draft.proxy).bind(args);
    draft.evaluation->evaluate();
    const Slot slot = draft.evaluation->output(0, 0);
    const std::vector<float> scene = valuesOf(plug, kMatrix);
    for (std::size_t i = 0; i < kMatrix; ++i) {
        if (!(std::abs(slot.floats()[i] - scene[i]) <= kTolerance * std::max(1.0f, std::abs(scene[i])))) {
            graph_.notes.push_back(fmt::format("{} stays as the scene has it: its channels do not make it, by {}",
                                               shortName(plug), method));
            return false;
        }
    }
    for (unsigned int i = 0; i < values.size(); ++i) {
        if (!values[i].first.isNull()) {
            draft.arguments.push_back(
                {i, values[i].first, draft.evaluation->argument(i, {0, {}}), shortName(values[i].first)});
        }
    }
    drafts_.push_back(std::move(draft));
    addMade(static_cast<std::uint32_t>(drafts_.size() - 1), 0, 0, plug, shortName(plug));
    return true;
}

// ---- the graph
// -------------------------------------------------------------------------------------------------------

/// The drafts, each behind those that it reads. An edge that would close a circle is cut and told: its argument stays
/// as the scene has it, as a plug in Maya keeps its value where its own evaluation asks for it again.
std::vector<std::uint32_t> Builder::inOrder() {
    enum class State : unsigned char { untouched, open, done };
    struct Visit {
        std::uint32_t draft;
        std::size_t edge;
    };
    std::vector<State> states(drafts_.size(), State::untouched);
    std::vector<std::uint32_t> order;
    std::vector<Visit> open;
    for (std::uint32_t start = 0; start < drafts_.size(); ++start) {
        if (states[start] != State::untouched) {
            continue;
        }
        open.push_back({start, 0});
        states[start] = State::open;
        while (!open.empty()) {
            Visit& visit = open.back();
            std::vector<Edge>& edges = drafts_[visit.draft].edges;
            if (visit.edge == edges.size()) {
                states[visit.draft] = State::done;
                order.push_back(visit.draft);
                open.pop_back();
                continue;
            }
            const Edge& edge = edges[visit.edge];
            if (states[edge.source] == State::untouched) {
                ++visit.edge;
                states[edge.source] = State::open;
                open.push_back({edge.source, 0});
            } else if (states[edge.source] == State::done) {
                ++visit.edge;
            } else {
                const auto first =
                    std::find_if(open.begin(), open.end(), [&edge](const Visit& v) { return v.draft == edge.source; });
                constexpr std::ptrdiff_t kMost = 16; // of the names on the way
                std::vector<std::string> names;
                for (auto v = open.end(); v != first && open.end() - v < kMost;) {
                    names.push_back(inWords(drafts_[(--v)->draft].info));
                }
                graph_.notes.push_back(
                    fmt::format("a cycle: {}{} reads {}; it is cut at {}, which stays as the scene has it",
                                fmt::join(names, ", which is read by "),
                                names.size() == static_cast<std::size_t>(kMost) ? " ..."
                                : names.size() > 1                              ? ","
                                                                                : "",
                                edge.sourceName, edge.targetName));
                edges.erase(edges.begin() + static_cast<std::ptrdiff_t>(visit.edge));
            }
        }
    }
    return order;
}

void Builder::tellGaps() {
    constexpr std::size_t kMost = 8;
    for (const auto& [type, plugs] : gaps_) {
        for (const auto& [plug, readers] : plugs) {
            const std::vector<std::string> names(
                readers.begin(),
                std::next(readers.begin(), static_cast<std::ptrdiff_t>(std::min(kMost, readers.size()))));
            graph_.notes.push_back(
                fmt::format("{} is taken from the scene: no method computes a node of type {}; {}{} {} it", plug, type,
                            fmt::join(names, ", "),
                            readers.size() > kMost ? fmt::format(" and {} more", readers.size() - kMost) : "",
                            readers.size() > 1 ? "read" : "reads"));
        }
    }
}

Graph Builder::build(json manifest) {
    for (const NodeRow& row : nodeTable()) {
        for (const NodeType& type : row.types) {
            knownTypes_.insert(type.name);
        }
    }
    knownTypes_.insert({"time", "unknown", "unknownDag"});
    std::size_t index = 0;
    for (json& record : manifest) {
        readRecord(record, index++);
    }
    for (std::uint32_t i = 0; i < drafts_.size(); ++i) { // it grows meanwhile
        for (std::size_t k = 0; k < drafts_[i].arguments.size(); ++k) {
            connect(i, drafts_[i].arguments[k]);
        }
    }
    const std::vector<std::uint32_t> order = inOrder();
    std::vector<std::uint32_t> places(drafts_.size());
    for (std::uint32_t place = 0; place < order.size(); ++place) {
        places[order[place]] = place;
    }
    for (const std::uint32_t i : order) {
        Draft& draft = drafts_[i];
        for (Edge& edge : draft.edges) {
            edge.source = places[edge.source];
        }
        Node node;
        node.proxy = std::move(draft.proxy);
        node.evaluation = std::move(draft.evaluation);
        node.edges = std::move(draft.edges);
        graph_.nodes.push_back(std::move(node));
        graph_.records.push_back(std::move(draft.info));
    }
    for (Output& output : graph_.outputs) {
        output.node = places[output.node];
    }
    for (Input& input : graph_.inputs) {
        for (Input::Use& use : input.uses) {
            use.node = places[use.node];
        }
    }
    tellGaps();
    graph_.settle();
    return std::move(graph_);
}

} // namespace

Graph buildGraph(json manifest) {
    return Builder().build(std::move(manifest));
}

} // namespace zent::rig
