#include "zent/rig/Rig.h"

#include "zent/rig/Graph.h"
#include "zent/values/nearestName.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace zent::rig {

namespace {

PlugId find(const std::unordered_map<std::string, PlugId>& names, const std::vector<PlugInfo>& infos,
            std::string_view plug, const char* what) {
    if (const auto found = names.find(std::string(plug)); found != names.end()) {
        PlugId id = found->second;
        id.count = id.count == 0 ? static_cast<std::uint32_t>(infos[id.index].size) : id.count;
        return id;
    }
    std::vector<std::string> known;
    for (const auto& [name, id] : names) {
        known.push_back(name);
    }
    std::sort(known.begin(), known.end());
    const std::string nearest = nearestName(std::string(plug), known);
    throw std::runtime_error(fmt::format("the rig has no {} {}{}", what, plug,
                                         nearest.empty() ? "" : fmt::format("; the nearest is {}", nearest)));
}

template <class Visit>
auto withShape(const Slot& slot, Visit visit) {
    switch (slot.kind) {
    case Slot::Kind::mesh:
        return visit(*static_cast<Mesh*>(slot.place));
    case Slot::Kind::curve:
        return visit(*static_cast<Curve*>(slot.place));
    case Slot::Kind::surface:
        return visit(*static_cast<Surface*>(slot.place));
    default:
        return visit(*static_cast<Lattice*>(slot.place));
    }
}

Slot madeBy(Graph& graph, PlugId id, bool isShape) {
    const Output& output = graph.outputs.at(id.index);
    const Slot slot = graph.valueOf(output);
    const Node& node = graph.nodes[output.node];
    if (!node.problem.empty() || slot.kind == Slot::Kind::none) {
        throw std::runtime_error(fmt::format("{} has no value{}{}", graph.outputInfos[id.index].name,
                                             node.problem.empty() ? "" : ": ", node.problem));
    }
    if (slot.isShape() != isShape) {
        throw std::runtime_error(fmt::format("{} is {} shape", graph.outputInfos[id.index].name, isShape ? "no" : "a"));
    }
    return slot;
}

} // namespace

Rig::Rig(Graph&& graph) : graph_(std::make_unique<Graph>(std::move(graph))) {
    for (std::size_t i = 0; i < graph_->outputs.size(); ++i) {
        PlugInfo& info = graph_->outputInfos[i];
        switch (const Slot slot = graph_->valueOf(graph_->outputs[i]); slot.kind) {
        case Slot::Kind::none:
            break;
        case Slot::Kind::mesh:
        case Slot::Kind::curve:
        case Slot::Kind::surface:
        case Slot::Kind::lattice:
            info.type = static_cast<Type>(static_cast<int>(slot.kind) - static_cast<int>(Slot::Kind::mesh) + 1);
            info.size = withShape(slot, [](const auto& shape) { return pointsOf(shape).size(); });
            break;
        default:
            info.size = slot.kind == Slot::Kind::floats ? slot.size : 1;
        }
    }
}
Rig::Rig(Rig&& other) noexcept = default;
Rig& Rig::operator=(Rig&& other) noexcept = default;
Rig::~Rig() = default;

const std::vector<RecordInfo>& Rig::records() const {
    return graph_->records;
}

const std::vector<PlugInfo>& Rig::inputs() const {
    return graph_->inputInfos;
}

const std::vector<PlugInfo>& Rig::outputs() const {
    return graph_->outputInfos;
}

const std::vector<std::string>& Rig::notes() const {
    return graph_->notes;
}

PlugId Rig::input(std::string_view plug) const {
    return find(graph_->inputNames, graph_->inputInfos, plug, "input");
}

PlugId Rig::output(std::string_view plug) const {
    return find(graph_->outputNames, graph_->outputInfos, plug, "output");
}

void Rig::setNumbers(PlugId id, const float* numbers, std::size_t count) {
    Input& input = graph_->inputs.at(id.index);
    const PlugInfo& info = graph_->inputInfos[id.index];
    if (info.type != Type::numbers) {
        throw std::runtime_error(fmt::format("{} is a shape", info.name));
    }
    if (count != id.count || id.first > input.numbers.size() || count > input.numbers.size() - id.first) {
        throw std::runtime_error(fmt::format("{} takes {} numbers, not {}", info.name, id.count, count));
    }
    float* const own = input.numbers.data() + id.first;
    if (std::memcmp(own, numbers, count * sizeof(float)) == 0) {
        return;
    }
    std::memcpy(own, numbers, count * sizeof(float));
    const Slot source{Slot::Kind::floats, static_cast<unsigned int>(input.numbers.size()), input.numbers.data()};
    for (const Input::Use& use : input.uses) {
        if (use.first < id.first + count && id.first < use.first + use.target.count) {
            put(source, use.first, use.factor, use.target);
            graph_->mark(use.node);
        }
    }
}

void Rig::setPoints(PlugId id, const vec3* points, std::size_t count) {
    const PlugInfo& info = graph_->inputInfos.at(id.index);
    if (info.type == Type::numbers) {
        throw std::runtime_error(fmt::format("{} is no shape", info.name));
    }
    if (count != info.size) {
        throw std::runtime_error(fmt::format("{} takes {} points, not {}", info.name, info.size, count));
    }
    for (const Input::Use& use : graph_->inputs[id.index].uses) {
        withShape(use.target.slot, [&](auto& shape) {
            if (pointsOf(shape).size() == count) {
                std::copy(points, points + count, pointsOf(shape).begin());
            }
            if constexpr (std::is_same_v<decltype(shape), Surface&>) {
                shape.closestSamples.clear();
            }
        });
        graph_->mark(use.node);
    }
}

std::size_t Rig::evaluate() {
    const std::size_t evaluated = graph_->evaluate();
    if (const Node* node = graph_->firstProblem()) {
        const auto place = static_cast<std::size_t>(node - graph_->nodes.data());
        throw std::runtime_error(fmt::format("{}: {}", inWords(graph_->records[place]), node->problem));
    }
    return evaluated;
}

const float* Rig::numbers(PlugId output) const {
    const Slot slot = madeBy(*graph_, output, false);
    if (slot.kind != Slot::Kind::floats) {
        throw std::runtime_error(fmt::format("{} holds no floats", graph_->outputInfos[output.index].name));
    }
    return slot.floats() + output.first;
}

vec3 Rig::vector(PlugId output) const {
    const float* const values = numbers(output);
    if (output.count < 3) {
        throw std::runtime_error(fmt::format("{} is no vector", graph_->outputInfos[output.index].name));
    }
    return {values[0], values[1], values[2]};
}

mat4 Rig::matrix(PlugId output) const {
    const float* const values = numbers(output);
    if (output.count != 16) {
        throw std::runtime_error(fmt::format("{} is no matrix", graph_->outputInfos[output.index].name));
    }
    mat4 made;
    std::memcpy(&made[0][0], values, sizeof made);
    return made;
}

const std::vector<vec3>& Rig::points(PlugId output) const {
    return *withShape(madeBy(*graph_, output, true), [](const auto& shape) { return &pointsOf(shape); });
}

mat4 Rig::shapeMatrix(PlugId output) const {
    return withShape(madeBy(*graph_, output, true), [](const auto& shape) { return matrixOf(shape); });
}

} // namespace zent::rig
