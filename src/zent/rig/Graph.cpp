#include "zent/rig/Graph.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <exception>
#include <limits>

namespace zent::rig {

namespace {

double numberAt(const Slot& slot, unsigned int index) {
    switch (slot.kind) {
    case Slot::Kind::floats:
        return static_cast<double>(slot.floats()[index]);
    case Slot::Kind::integer:
        return static_cast<double>(*static_cast<const int*>(slot.place));
    case Slot::Kind::whole:
        return static_cast<double>(*static_cast<const unsigned int*>(slot.place));
    default:
        return *static_cast<const bool*>(slot.place) ? 1.0 : 0.0;
    }
}

int wholeNumber(double number) {
    constexpr double kFirst = std::numeric_limits<int>::min();
    constexpr double kLast = std::numeric_limits<int>::max();
    return number >= kLast   ? std::numeric_limits<int>::max()
           : number > kFirst ? static_cast<int>(number)
                             : std::numeric_limits<int>::min();
}

unsigned int countOf(const Slot& slot) {
    return slot.kind == Slot::Kind::floats ? slot.size : 1;
}

/// A number is read of a number, a matrix of a matrix, and a vector of one that has as many numbers or more.
bool fits(const Slot& source, const Edge& edge) {
    const unsigned int count = edge.target.count;
    const unsigned int available = countOf(source);
    return source.isShape() || !edge.isWhole || available == count ||
           (count > 1 && available > count && available <= 4);
}

template <class T>
bool putShape(const Slot& source, const Target& target) {
    const T& from = *static_cast<const T*>(source.place);
    T& to = *static_cast<T*>(target.slot.place);
    if (!target.pointsOnly) {
        to = from;
        return true;
    }
    if (pointsOf(from).size() != pointsOf(to).size()) {
        return false;
    }
    pointsOf(to) = pointsOf(from);
    if constexpr (std::is_same_v<T, Surface>) {
        to.closestSamples.clear();
    }
    return true;
}

/// Whether its points can be deformed apart from one another: those of a mesh, which share no list that changes.
bool canSplit(const Node& node) {
    return node.problem.empty() && node.evaluation->points() >= 2 * Schedule::kLeastPoints &&
           node.evaluation->output(0, 0).kind == Slot::Kind::mesh;
}

} // namespace

bool put(const Slot& source, unsigned int first, float factor, const Target& target) {
    const Slot& slot = target.slot;
    if (source.kind == Slot::Kind::none || source.isShape() != slot.isShape()) {
        return false;
    }
    switch (slot.kind) {
    case Slot::Kind::mesh:
        return source.kind == slot.kind && putShape<Mesh>(source, target);
    case Slot::Kind::curve:
        return source.kind == slot.kind && putShape<Curve>(source, target);
    case Slot::Kind::surface:
        return source.kind == slot.kind && putShape<Surface>(source, target);
    case Slot::Kind::lattice:
        return source.kind == slot.kind && putShape<Lattice>(source, target);
    default:
        break;
    }
    const unsigned int available = countOf(source);
    if (first >= available || target.count > available - first) {
        return false;
    }
    if (slot.kind != Slot::Kind::floats) {
        const double number = numberAt(source, first) * static_cast<double>(factor);
        switch (slot.kind) {
        case Slot::Kind::integer:
            *static_cast<int*>(slot.place) = wholeNumber(number);
            return true;
        case Slot::Kind::whole:
            *static_cast<unsigned int*>(slot.place) = static_cast<unsigned int>(wholeNumber(number));
            return true;
        case Slot::Kind::boolean:
            *static_cast<bool*>(slot.place) = number != 0.0;
            return true;
        case Slot::Kind::bit:
            (*static_cast<std::vector<bool>*>(slot.place))[slot.size] = number != 0.0;
            return true;
        default:
            return false;
        }
    }
    float* const to = slot.floats() + target.first;
    if (source.kind != Slot::Kind::floats) {
        *to = static_cast<float>(numberAt(source, first)) * factor;
        return true;
    }
    const float* const from = source.floats() + first;
    if (factor == 1.0f) {
        std::memcpy(to, from, target.count * sizeof(float));
        return true;
    }
    for (unsigned int i = 0; i < target.count; ++i) {
        to[i] = from[i] * factor;
    }
    return true;
}

Slot Graph::valueOf(const Output& output) {
    return nodes[output.node].evaluation->output(output.attribute, output.position);
}

/// Reads a node's sources. False, with the problem told, where one of them failed.
bool Graph::bring(Node& node) {
    for (std::uint32_t w = node.wires; w < node.wiresEnd; ++w) {
        const Wire& wire = wires_[w];
        const Edge& edge = node.edges[w - node.wires];
        if (failed_[wire.source] != 0) {
            node.problem = fmt::format("it reads {}, which has no value", edge.sourceName);
            return false;
        }
        if (wire.from != nullptr) {
            std::memcpy(wire.target.slot.floats() + wire.target.first, wire.from, wire.target.count * sizeof(float));
        } else if (!put(wire.evaluation->output(wire.attribute, wire.position), wire.first, wire.factor, wire.target)) {
            node.problem = fmt::format("{} has no value for {}", edge.sourceName, edge.targetName);
            return false;
        }
    }
    return true;
}

/// Makes the wires of a node's edges, whose sources have been evaluated.
void Graph::lay(std::uint32_t index) {
    Node& node = nodes[index];
    node.wires = static_cast<std::uint32_t>(wires_.size());
    for (const Edge& edge : node.edges) {
        Evaluation& source = *nodes[edge.source].evaluation;
        const Slot slot = source.output(edge.attribute, edge.position);
        const bool isPlain = source.staysInPlace() && slot.kind == Slot::Kind::floats &&
                             edge.target.slot.kind == Slot::Kind::floats && edge.factor == 1.0f &&
                             edge.first < slot.size && edge.target.count <= slot.size - edge.first;
        wires_.push_back({&source, isPlain ? slot.floats() + edge.first : nullptr, edge.source, edge.attribute,
                          static_cast<std::uint32_t>(edge.position), edge.first, edge.factor, edge.target});
    }
    node.wiresEnd = static_cast<std::uint32_t>(wires_.size());
}

void Graph::run(std::uint32_t index) {
    Node& node = nodes[index];
    try {
        node.problem.clear();
        if (bring(node)) {
            node.evaluation->evaluate();
        }
    } catch (const std::exception& error) {
        node.problem = error.what();
    }
    failed_[index] = node.problem.empty() ? 0 : 1;
}

void Graph::settle() {
    marks_.assign(nodes.size(), 0);
    failed_.assign(nodes.size(), 0);
    for (std::uint32_t i = 0; i < nodes.size(); ++i) {
        Node& node = nodes[i];
        const auto brings = [this](const Edge& edge) {
            const Node& source = nodes[edge.source];
            if (!source.problem.empty()) {
                return true; // which is told by itself
            }
            const Slot slot = source.evaluation->output(edge.attribute, edge.position);
            return fits(slot, edge) && put(slot, edge.first, edge.factor, edge.target);
        };
        const auto kept = std::stable_partition(node.edges.begin(), node.edges.end(), brings);
        for (auto edge = kept; edge != node.edges.end(); ++edge) {
            notes.push_back(fmt::format("{}: {} brings nothing that fits {}, which stays as the scene has it",
                                        inWords(records[i]), edge->sourceName, edge->targetName));
        }
        node.edges.erase(kept, node.edges.end());
        for (const Edge& edge : node.edges) {
            std::vector<std::uint32_t>& targets = nodes[edge.source].targets;
            if (targets.empty() || targets.back() != i) {
                targets.push_back(i);
            }
            records[i].sources.push_back(edge.source);
        }
        std::vector<std::size_t>& sources = records[i].sources;
        std::sort(sources.begin(), sources.end());
        sources.erase(std::unique(sources.begin(), sources.end()), sources.end());
        lay(i);
        run(i);
    }
}

void Graph::setWorkers(std::shared_ptr<Workers> workers) {
    workers_ = std::move(workers);
    schedule_.reset();
}

std::size_t Graph::evaluate() {
    if (!workers_) {
        return evaluateInOrder();
    }
    if (!schedule_) {
        const std::size_t evaluated = evaluateInOrder();
        std::vector<ScheduledNode> scheduled(nodes.size());
        const std::vector<double> costs = measure();
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            scheduled[i] = {costs[i], canSplit(nodes[i]), {}};
            for (const Edge& edge : nodes[i].edges) {
                scheduled[i].sources.push_back(edge.source);
            }
        }
        schedule_ = std::make_unique<Schedule>(std::move(scheduled), workers_->count());
        return evaluated;
    }
    return evaluateSideBySide();
}

/// What each node costs, in seconds: the least of some evaluations, which change nothing.
std::vector<double> Graph::measure() {
    using Clock = std::chrono::steady_clock;
    constexpr int kTimes = 3;
    std::vector<double> costs(nodes.size(), std::numeric_limits<double>::max());
    for (int time = 0; time < kTimes; ++time) {
        for (std::uint32_t i = 0; i < nodes.size(); ++i) {
            const Clock::time_point start = Clock::now();
            run(i);
            costs[i] = std::min(costs[i], std::chrono::duration<double>(Clock::now() - start).count());
        }
    }
    return costs;
}

std::size_t Graph::evaluateSideBySide() {
    std::size_t evaluated = 0;
    double cost = 0.0;
    for (std::uint32_t i = 0; i < nodes.size(); ++i) {
        if (marks_[i] != 0) {
            ++evaluated;
            cost += schedule_->costOf(i);
            for (const std::uint32_t target : nodes[i].targets) {
                mark(target);
            }
        }
    }
    if (cost < Schedule::kLeastCost) {
        return evaluateInOrder();
    }
    const auto runMarked = [this](std::uint32_t i) {
        if (marks_[i] != 0) {
            marks_[i] = 0;
            run(i);
        }
    };
    workers_->enter([&] {
        for (const Schedule::Step& step : schedule_->steps()) {
            if (step.isSplit) {
                const std::uint32_t i = step.parts.front().front();
                if (marks_[i] != 0) {
                    marks_[i] = 0;
                    runSplit(i);
                }
            } else if (step.parts.size() == 1) {
                std::for_each(step.parts.front().begin(), step.parts.front().end(), runMarked);
            } else {
                workers_->run(step.parts.size(), [&](std::size_t part) {
                    std::for_each(step.parts[part].begin(), step.parts[part].end(), runMarked);
                });
            }
        }
    });
    return evaluated;
}

/// A deformer, some of its points in each part.
void Graph::runSplit(std::uint32_t index) {
    Node& node = nodes[index];
    try {
        node.problem.clear();
        if (!bring(node)) {
            failed_[index] = 1;
            return;
        }
        Evaluation& evaluation = *node.evaluation;
        evaluation.begin();
        const unsigned int points = evaluation.points();
        const unsigned int parts = std::max(1U, std::min(4 * workers_->count(), points / Schedule::kLeastPoints));
        std::vector<std::exception_ptr> failures(parts);
        workers_->run(parts, [&](std::size_t part) {
            const auto at = [&](std::size_t k) { return static_cast<unsigned int>(k * points / parts); };
            try {
                evaluation.evaluatePoints(at(part), at(part + 1));
            } catch (...) {
                failures[part] = std::current_exception();
            }
        });
        for (const std::exception_ptr& failure : failures) { // the one that a serial evaluation meets first
            if (failure) {
                std::rethrow_exception(failure);
            }
        }
    } catch (const std::exception& error) {
        node.problem = error.what();
    }
    failed_[index] = node.problem.empty() ? 0 : 1;
}

std::size_t Graph::evaluateInOrder() {
    std::size_t evaluated = 0;
    for (std::uint32_t i = 0; i < nodes.size(); ++i) {
        if (marks_[i] == 0) {
            continue;
        }
        marks_[i] = 0;
        ++evaluated;
        run(i);
        for (const std::uint32_t target : nodes[i].targets) {
            mark(target);
        }
    }
    return evaluated;
}

const Node* Graph::firstProblem() const {
    const auto found = std::find(failed_.begin(), failed_.end(), 1);
    return found == failed_.end() ? nullptr : &nodes[static_cast<std::size_t>(found - failed_.begin())];
}

std::string inWords(const RecordInfo& record) {
    return fmt::format("{}({})", record.node, record.method);
}

} // namespace zent::rig
