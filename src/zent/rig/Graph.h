#pragma once

#include "zent/proxies/Evaluation.h"
#include "zent/proxies/Proxy.h"
#include "zent/rig/Rig.h"
#include "zent/rig/Schedule.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace zent::rig {

/// Where an edge puts what it brings: all of a slot, or some of its floats.
struct Target {
    Slot slot;
    unsigned int first = 0;
    unsigned int count = 0;  ///< of floats
    bool pointsOnly = false; ///< of a shape, whose own matrix stays
};

/// Puts a value into a target, converted as Maya's plugs do: numbers to whole numbers by dropping their fraction.
/// `first` is the first of the source's floats. False for types that do not fit.
bool put(const Slot& source, unsigned int first, float factor, const Target& target);

/// What a record reads from another one's output.
struct Edge {
    std::uint32_t source;    ///< the node
    std::uint32_t attribute; ///< of its result
    std::size_t position;
    unsigned int first = 0; ///< of its floats
    bool isWhole = true;    ///< none of a compound's children
    float factor = 1.0f;    ///< of the unit conversions on the way
    Target target;
    std::string sourceName; ///< the plugs, for messages
    std::string targetName;
};

/// A result's entry that has a plug of its own.
struct Output {
    std::uint32_t node;
    std::uint32_t attribute;
    std::size_t position;
};

/// Numbers, or the points of a shape, that no record makes, and all that reads them.
struct Input {
    struct Use {
        std::uint32_t node;
        unsigned int first; ///< of the input's numbers
        float factor;
        Target target;
    };
    std::vector<float> numbers;
    std::vector<Use> uses;
};

/// What an evaluation needs of an edge, side by side with those of its node.
struct Wire {
    Evaluation* evaluation; ///< the source
    const float* from;      ///< its floats where they stay in place, and go over as they are; else null
    std::uint32_t source;
    std::uint32_t attribute;
    std::uint32_t position;
    unsigned int first;
    float factor;
    Target target;
};

struct Node {
    std::unique_ptr<Proxy> proxy; ///< outlives its evaluation
    std::unique_ptr<Evaluation> evaluation;
    std::vector<Edge> edges;
    std::uint32_t wires = 0; ///< the first one, and the one behind the last one
    std::uint32_t wiresEnd = 0;
    std::vector<std::uint32_t> targets; ///< the nodes that read it
    std::string problem;                ///< why the last evaluation failed; empty where it did not
};

/// The records of a rig, in an order in which each comes after those that it reads.
class Graph {
public:
    std::vector<Node> nodes;
    std::vector<RecordInfo> records; ///< of the nodes, one each
    std::vector<Input> inputs;
    std::vector<PlugInfo> inputInfos;
    std::vector<Output> outputs;
    std::vector<PlugInfo> outputInfos;
    std::unordered_map<std::string, PlugId> inputNames;
    std::unordered_map<std::string, PlugId> outputNames;
    std::vector<std::string> notes;

    /// Evaluates everything once, leaves out the edges that bring nothing that fits, and tells them in the notes.
    void settle();
    /// By whom evaluations are done from now on: null for the caller alone.
    void setWorkers(std::shared_ptr<Workers> workers);
    const Workers* workers() const { return workers_.get(); }
    /// Evaluates what is marked, and returns how many nodes that were.
    std::size_t evaluate();
    void mark(std::uint32_t node) { marks_[node] = 1; }
    Slot valueOf(const Output& output);
    /// The first node with a problem; null for none.
    const Node* firstProblem() const;

private:
    bool bring(Node& node);
    void lay(std::uint32_t node);
    void run(std::uint32_t node);
    std::size_t evaluateInOrder();
    std::size_t evaluateSideBySide();
    void runSplit(std::uint32_t node);
    std::vector<double> measure();

    std::vector<Wire> wires_;
    std::vector<char> failed_; ///< of the nodes with a problem
    std::vector<char> marks_;  ///< of the nodes that have to be evaluated
    std::shared_ptr<Workers> workers_;
    std::unique_ptr<Schedule> schedule_; ///< made by the first evaluation that has workers
};

/// "elbow(joint)".
std::string inWords(const RecordInfo& record);

} // namespace zent::rig
