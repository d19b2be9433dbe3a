#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The table of Maya's nodes: which node types a method belongs to, and on which plugs its results and arguments stand.
/// NodeTable.cpp has it as data; what is listed, checked or written by it goes by it.
namespace zent {

/// A node type, such as "ikHandle", and what tells more closely whether the method is the node's: the type of its
/// solver or of the node that drives it. `isDoubtful` marks a name that nobody has seen in Maya yet.
struct NodeType {
    std::string name;
    std::string driver;
    bool isDoubtful = false;
};

/// Where a result or an argument comes from.
struct Source {
    enum class Kind {
        plug,    ///< a plug, of the node itself or of those that `walk` leads to
        literal, ///< a number that no plug holds
        reader   ///< a function that reads `plugs` and makes a value or a block
    };
    Kind kind = Kind::plug;
    std::string walk; ///< "chain", "effector", "handle" ...; empty for the node itself
    /// A plug: "input3D[*]" stands for one entry for each logical index in use, "weight[#]" for the same with its index
    /// in the entry, "outputGeometry[g]" for the index of a deformer's geometry. A literal: its text. A reader: its
    /// name.
    std::string text;
    std::vector<std::string> plugs; ///< that a reader reads
    std::string otherwise;          ///< a literal for nodes without such a plug, empty for none
    bool isDoubtful = false;
    bool isAngle = false; ///< radians
    bool ascends = false; ///< a list that must ascend
    bool onlyUsed =
        false; ///< a result that makes a record where it is connected, or where no such result of the node is

    /// "input1", "chain.rotate", "= 0", "from skinWeights".
    std::string inWords() const;
};

/// What must hold of a node for a record to be made.
struct Guard {
    enum class Test {
        equals,      ///< each number of the plug is one of `numbers`
        count,       ///< how many elements a multi has: one of `numbers`
        countAtMost, ///< the same, at most the first of `numbers`
        countAtLeast,
        identity, ///< a matrix
        connected,
        unconnected,
        exists,  ///< the node has such a plug
        function ///< `plug` is the name of a function
    };
    Test test = Test::equals;
    std::string walk;
    std::string plug;
    std::vector<double> numbers;
    std::string why;          ///< in words, what the node does that the method does not; may be empty
    bool isCondition = false; ///< tells whether the method is the node's at all: nobody is told where it fails
    bool isDoubtful = false;
};

/// One method on one kind of node.
struct NodeRow {
    std::string method;
    std::vector<NodeType> types;
    std::vector<Source> results; ///< by attribute number
    std::vector<Source> arguments;
    std::vector<Guard> guards;

    bool isDoubtful() const;
};

/// All rows, those of one method next to one another: a row for each channel of a node whose method takes one, and one
/// for each kind of node.
const std::vector<NodeRow>& nodeTable();

/// The node types of a method in words: "clamp", "ikHandle (ikRPsolver)", "animCurveTL, animCurveTA ...", a doubtful
/// name with a "?".
std::string nodeTypesInWords(const std::string& method);

/// The type of the nodes that a walk leads to, such as "joint" for "chain".
std::string walkedType(std::string_view walk, const NodeType& from);

/// The plugs that the table asks for, each with its node type, once.
struct AskedPlug {
    std::string type;
    std::string plug; ///< with "[0]" in the place of each index
    bool isDoubtful = false;
};
std::vector<AskedPlug> askedPlugs();

} // namespace zent
