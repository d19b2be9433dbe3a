#pragma once

#include "zent/expression/Opcode.h"
#include "zent/expression/Token.h"
#include "zent/expression/Value.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zent {

/// What stops a compilation: where, the word at which it stops, what is wrong there and what to do.
struct ExpressionError {
    int line = 0;   ///< from 1
    int column = 0; ///< from 1, in characters
    std::string thing;
    std::string problem;
};

/// The types of values while a program is compiled. A condition, which the machine keeps as a bool, is an integer to
/// the language.
enum class Type { Bool, Int, Float, Vector };

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

/// A node of the tree: what the parser reads, and what the types make of it.
struct Expression {
    enum class Kind {
        Constant,
        Name,      ///< of an attribute, time or frame; typed, it is an input or an output
        Input,     ///< slot
        Output,    ///< slot
        Variable,  ///< name; typed, the number of the variable in `slot`
        Vector,    ///< three operands
        Component, ///< of a vector; which one in `slot`
        Negate,
        Not,
        Multiply, ///< also each of the next kinds: two operands
        Divide,
        Modulo,
        Cross,
        Add,
        Subtract,
        Less,
        LessEqual,
        Greater,
        GreaterEqual,
        Equal,
        NotEqual,
        And,
        Or,
        Choose,   ///< condition, two values
        Assign,   ///< target, value
        PostStep, ///< target, and 1 or -1 to add
        Call,     ///< a function by its name
        Convert,  ///< to the type, from the operand's; only the types make it
    };

    Expression(Kind theKind, SourcePlace thePlace) : kind(theKind), place(thePlace) {}

    Kind kind;
    SourcePlace place;
    std::string name{};
    Value constant{};
    int slot = 0;
    Type type = Type::Int; ///< of the result; the types set it
    int depth = 1;         ///< of the tree below
    std::vector<ExpressionPtr> operands{};
};

struct Statement;
using StatementPtr = std::unique_ptr<Statement>;

struct Statement {
    enum class Kind {
        Declare, ///< one variable, by an Expression of kind Variable, and its value if it has one
        Evaluate,
        Block,
        If,    ///< condition; one or two bodies
        While, ///< condition; body
        Do,    ///< condition; body
        For,   ///< condition, which may be null; bodies: the block of the start, the block of the step, the body
        Break,
        Continue,
    };

    Statement(Kind theKind, SourcePlace thePlace) : kind(theKind), place(thePlace) {}

    Kind kind;
    SourcePlace place;
    std::optional<Type> type{}; ///< of a declaration
    ExpressionPtr expression{};
    ExpressionPtr value{};
    std::vector<StatementPtr> bodies{};
    /// The variables that the statement makes before it runs; the types find them.
    std::vector<std::pair<int, Type>> made{};
};

/// Reads a program. Throws ExpressionError.
StatementPtr parseExpression(const std::string& source);

} // namespace zent
