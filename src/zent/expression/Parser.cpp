#include "zent/expression/Tree.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <string_view>

namespace zent {

namespace {

using Kind = Expression::Kind;

// How deep a program may nest, and how many operators may follow one another.
constexpr int kMaxDepth = 400;

struct Operator {
    Kind kind;
    int rank; // higher binds closer
};

// The language's table of precedence; those of a rank are read from the left.
const std::map<std::string_view, Operator> kOperators{
    {"*", {Kind::Multiply, 7}}, {"/", {Kind::Divide, 7}},        {"%", {Kind::Modulo, 7}}, {"^", {Kind::Cross, 7}},
    {"+", {Kind::Add, 6}},      {"-", {Kind::Subtract, 6}},      {"<", {Kind::Less, 5}},   {"<=", {Kind::LessEqual, 5}},
    {">", {Kind::Greater, 5}},  {">=", {Kind::GreaterEqual, 5}}, {"==", {Kind::Equal, 4}}, {"!=", {Kind::NotEqual, 4}},
    {"&&", {Kind::And, 3}},     {"||", {Kind::Or, 2}},
};

const std::map<std::string_view, Type> kTypes{{"int", Type::Int}, {"float", Type::Float}, {"vector", Type::Vector}};

const std::map<std::string_view, int> kBooleans{{"true", 1},  {"on", 1},  {"yes", 1},
                                                {"false", 0}, {"off", 0}, {"no", 0}};

// What the language has and an expression's byte code has not, and what to do about it.
const std::map<std::string_view, const char*> kRefusedWords{
    {"proc", "a procedure has no place in a compiled expression: write its steps where it is called"},
    {"global",
     "a global variable outlives an evaluation, and byte code keeps nothing between two: feed it as an input"},
    {"string", "there are no strings in byte code: use numbers"},
    {"matrix", "there are no matrices in byte code: use vectors"},
    {"switch", "there is no switch here: write if and else"},
    {"case", "there is no switch here: write if and else"},
    {"default", "there is no switch here: write if and else"},
    {"return", "an expression returns nothing: assign to an attribute, node.attribute = value"},
    {"in", "there are no arrays in byte code: count with for (start; condition; step)"},
};

class Parser {
public:
    explicit Parser(const std::string& source) : tokens_(tokenize(source)) {}

    StatementPtr parse() {
        auto program = std::make_unique<Statement>(Statement::Kind::Block, here().place);
        while (here().kind != Token::Kind::End) {
            parseStatement(program->bodies);
        }
        return program;
    }

private:
    const Token& here() const { return tokens_[next_]; }
    const Token& ahead() const { return tokens_[std::min(next_ + 1, tokens_.size() - 1)]; }
    bool isWord(std::string_view word) const { return here().kind == Token::Kind::Name && here().text == word; }

    [[noreturn]] static void failAt(const Token& token, const std::string& problem) {
        const std::string thing = token.kind == Token::Kind::End ? "the end" : token.text;
        throw ExpressionError{token.place.line, token.place.column, thing, problem};
    }

    // What is wrong with a token that fits nowhere, whatever was expected.
    [[noreturn]] void failHere(const std::string& expected) const {
        const Token& token = here();
        if (token.kind == Token::Kind::Text) {
            failAt(token, "there are no strings in byte code: use numbers");
        }
        if (token.is("`")) {
            failAt(token, "a command cannot run in byte code: read an attribute, node.attribute");
        }
        if (token.is("[")) {
            failAt(token, "there are no arrays in byte code: use a variable for each element");
        }
        if (token.is("{")) {
            failAt(token, "an array has no place here, there are none in byte code: use a variable for each element");
        }
        if (token.kind == Token::Kind::Unknown) {
            failAt(token, "the language has no such word: take it out or mend it");
        }
        if (token.kind == Token::Kind::Name) {
            refuseWord(token);
        }
        failAt(token, "expected " + expected);
    }

    static void refuseWord(const Token& token) {
        if (const auto refused = kRefusedWords.find(token.text); refused != kRefusedWords.end()) {
            failAt(token, refused->second);
        }
    }

    Token take() { return tokens_[next_ + 1 < tokens_.size() ? next_++ : next_]; }

    bool takeIf(const char* symbol) {
        if (!here().is(symbol)) {
            return false;
        }
        take();
        return true;
    }

    void expect(const char* symbol) {
        if (!takeIf(symbol)) {
            failHere(symbol);
        }
    }

    // Counts how deep the reader is, so that no text exhausts the program's own stack.
    class Level {
    public:
        explicit Level(Parser& parser) : parser_(parser) {
            if (++parser_.level_ > kMaxDepth) {
                failAt(parser_.here(), "this nests too deep: use variables for parts of it");
            }
        }
        ~Level() { --parser_.level_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        Parser& parser_;
    };

    // Statements

    void parseStatement(std::vector<StatementPtr>& to) {
        const Level level(*this);
        const Token first = here();
        if (takeIf(";")) {
            return;
        }
        if (first.is("{")) {
            to.push_back(parseBlock());
        } else if (isWord("if")) {
            to.push_back(parseIf());
        } else if (isWord("while")) {
            take();
            auto loop = std::make_unique<Statement>(Statement::Kind::While, first.place);
            loop->expression = parseCondition();
            loop->bodies.push_back(parseBody());
            to.push_back(std::move(loop));
        } else if (isWord("do")) {
            to.push_back(parseDo());
        } else if (isWord("for")) {
            to.push_back(parseFor());
        } else if (isWord("break") || isWord("continue")) {
            take();
            to.push_back(std::make_unique<Statement>(
                first.text == "break" ? Statement::Kind::Break : Statement::Kind::Continue, first.place));
            endStatement();
        } else {
            parseSimple(to);
            endStatement();
        }
    }

    // The last statement needs no semicolon.
    void endStatement() {
        if (here().kind != Token::Kind::End) {
            expect(";");
        }
    }

    StatementPtr parseBlock() {
        auto block = std::make_unique<Statement>(Statement::Kind::Block, here().place);
        expect("{");
        while (!here().is("}")) {
            if (here().kind == Token::Kind::End) {
                failHere("}");
            }
            parseStatement(block->bodies);
        }
        take();
        return block;
    }

    // What a condition governs, a block of its own.
    StatementPtr parseBody() {
        if (here().is("{")) {
            return parseBlock();
        }
        auto block = std::make_unique<Statement>(Statement::Kind::Block, here().place);
        if (here().kind == Token::Kind::End) {
            failHere("a statement");
        }
        parseStatement(block->bodies);
        return block;
    }

    ExpressionPtr parseCondition() {
        expect("(");
        ExpressionPtr condition = parseValue();
        expect(")");
        return condition;
    }

    StatementPtr parseIf() {
        auto statement = std::make_unique<Statement>(Statement::Kind::If, take().place);
        statement->expression = parseCondition();
        statement->bodies.push_back(parseBody());
        if (isWord("else")) {
            take();
            statement->bodies.push_back(parseBody());
        }
        return statement;
    }

    StatementPtr parseDo() {
        auto loop = std::make_unique<Statement>(Statement::Kind::Do, take().place);
        loop->bodies.push_back(parseBody());
        if (!isWord("while")) {
            failHere("while");
        }
        take();
        loop->expression = parseCondition();
        endStatement();
        return loop;
    }

    StatementPtr parseFor() {
        auto loop = std::make_unique<Statement>(Statement::Kind::For, take().place);
        expect("(");
        loop->bodies.push_back(parseList(";"));
        loop->expression = here().is(";") ? nullptr : parseValue();
        expect(";");
        loop->bodies.push_back(parseList(")"));
        loop->bodies.push_back(parseBody());
        return loop;
    }

    // Declarations and expressions with commas between, up to a symbol.
    StatementPtr parseList(const char* end) {
        auto list = std::make_unique<Statement>(Statement::Kind::Block, here().place);
        if (!here().is(end)) {
            do {
                parseSimple(list->bodies);
            } while (takeIf(","));
        }
        expect(end);
        return list;
    }

    void parseSimple(std::vector<StatementPtr>& to) {
        if (const auto type = kTypes.find(here().text);
            here().kind == Token::Kind::Name && type != kTypes.end() && !ahead().is("(")) {
            take();
            do {
                to.push_back(parseDeclaration(type->second));
            } while (takeIf(","));
            return;
        }
        if (here().kind == Token::Kind::Name && here().text.find('.') == std::string::npos) {
            refuseWord(here());
            const Token& second = ahead();
            if (second.kind == Token::Kind::Name || second.kind == Token::Kind::Text ||
                second.kind == Token::Kind::Variable || second.kind == Token::Kind::Integer ||
                second.kind == Token::Kind::Float) {
                failAt(here(), "a command cannot run in byte code: assign to an attribute, node.attribute = value");
            }
        }
        auto statement = std::make_unique<Statement>(Statement::Kind::Evaluate, here().place);
        statement->expression = parseValue();
        to.push_back(std::move(statement));
    }

    StatementPtr parseDeclaration(Type type) {
        auto declaration = std::make_unique<Statement>(Statement::Kind::Declare, here().place);
        if (here().kind != Token::Kind::Variable) {
            failHere("a variable, $name");
        }
        declaration->type = type;
        declaration->expression = parseVariable();
        if (takeIf("=")) {
            declaration->value = parseValue();
        }
        return declaration;
    }

    // Values

    static ExpressionPtr make(Kind kind, SourcePlace place) { return std::make_unique<Expression>(kind, place); }

    template <class... Operands>
    static ExpressionPtr make(Kind kind, const Token& at, Operands... operands) {
        ExpressionPtr result = make(kind, at.place);
        (result->operands.push_back(std::move(operands)), ...);
        for (const ExpressionPtr& operand : result->operands) {
            result->depth = std::max(result->depth, operand->depth + 1);
        }
        if (result->depth > kMaxDepth) {
            failAt(at, "this nests too deep: use variables for parts of it");
        }
        return result;
    }

    static ExpressionPtr constant(SourcePlace place, Value value) {
        ExpressionPtr result = make(Kind::Constant, place);
        result->constant = value;
        return result;
    }

    static ExpressionPtr copyOfTarget(const Expression& target) {
        ExpressionPtr copy = make(target.kind, target.place);
        copy->name = target.name;
        return copy;
    }

    static void requireTarget(const Expression& target, const Token& at) {
        if (target.kind == Kind::Component) {
            failAt(at, "a component cannot be assigned: assign the vector, $v = <<$v.x, 5, $v.z>>");
        }
        if (target.kind != Kind::Variable && target.kind != Kind::Name) {
            failAt(at, "only a variable or an attribute can be assigned");
        }
    }

    // From the right: assignments, then the choice.
    ExpressionPtr parseValue() {
        const Level level(*this);
        ExpressionPtr target = parseBinary(parseUnary(), 0);
        const Token at = here();
        if (takeIf("?")) {
            ExpressionPtr yes = parseValue();
            expect(":");
            ExpressionPtr no = parseValue();
            return make(Kind::Choose, at, std::move(target), std::move(yes), std::move(no));
        }
        if (takeIf("=")) {
            requireTarget(*target, at);
            ExpressionPtr value = parseValue();
            return make(Kind::Assign, at, std::move(target), std::move(value));
        }
        if (at.kind == Token::Kind::Symbol && at.text.size() == 2 && at.text[1] == '=' &&
            kOperators.count(at.text) == 0) {
            take();
            requireTarget(*target, at);
            const Kind kind = kOperators.at(std::string_view(at.text).substr(0, 1)).kind;
            ExpressionPtr value = parseValue();
            ExpressionPtr sum = make(kind, at, copyOfTarget(*target), std::move(value));
            return make(Kind::Assign, at, std::move(target), std::move(sum));
        }
        return target;
    }

    // The operators of at least a rank, behind their first operand.
    ExpressionPtr parseBinary(ExpressionPtr left, int rank) {
        for (;;) {
            const Token at = here();
            const auto found = at.kind == Token::Kind::Symbol ? kOperators.find(at.text) : kOperators.end();
            if (found == kOperators.end() || found->second.rank < rank) {
                return left;
            }
            take();
            ExpressionPtr right = parseBinary(parseUnary(), found->second.rank + 1);
            left = make(found->second.kind, at, std::move(left), std::move(right));
        }
    }

    ExpressionPtr parseUnary() {
        const Level level(*this);
        const Token at = here();
        if (takeIf("-")) {
            return make(Kind::Negate, at, parseUnary());
        }
        if (takeIf("+")) {
            return parseUnary();
        }
        if (takeIf("!")) {
            return make(Kind::Not, at, parseUnary());
        }
        if (takeIf("++") || takeIf("--")) {
            ExpressionPtr target = parseUnary();
            requireTarget(*target, at);
            ExpressionPtr sum = make(Kind::Add, at, copyOfTarget(*target), stepOf(at));
            return make(Kind::Assign, at, std::move(target), std::move(sum));
        }
        return parsePostfix();
    }

    static ExpressionPtr stepOf(const Token& at) { return constant(at.place, at.text == "++" ? 1 : -1); }

    ExpressionPtr parsePostfix() {
        ExpressionPtr operand = parsePrimary();
        for (;;) {
            const Token at = here();
            if (at.kind == Token::Kind::Component) {
                take();
                operand = make(Kind::Component, at, std::move(operand));
                operand->slot = at.text[1] - 'x';
            } else if (takeIf("++") || takeIf("--")) {
                requireTarget(*operand, at);
                operand = make(Kind::PostStep, at, std::move(operand), stepOf(at));
            } else {
                return operand;
            }
        }
    }

    ExpressionPtr parsePrimary() {
        const Token at = here();
        switch (at.kind) {
        case Token::Kind::Integer:
            return constant(at.place, integer(take()));
        case Token::Kind::Float:
            return constant(at.place, number(take()));
        case Token::Kind::Variable:
            return parseVariable();
        case Token::Kind::Name:
            return parseName();
        case Token::Kind::Symbol:
            if (at.is("(")) {
                return parseBracket();
            }
            if (takeIf("<<")) {
                ExpressionPtr x = parseValue();
                expect(",");
                ExpressionPtr y = parseValue();
                expect(",");
                ExpressionPtr z = parseValue();
                expect(">>");
                return make(Kind::Vector, at, std::move(x), std::move(y), std::move(z));
            }
            break;
        default:
            break;
        }
        failHere("a value");
    }

    // Something in brackets, or a type in brackets before what it converts: (int)$a.
    ExpressionPtr parseBracket() {
        const Token at = take();
        const auto type = here().kind == Token::Kind::Name ? kTypes.find(here().text) : kTypes.end();
        if (type != kTypes.end() && ahead().is(")")) {
            take();
            take();
            return conversion(at, type->second, parseUnary());
        }
        ExpressionPtr value = parseValue();
        expect(")");
        return value;
    }

    static ExpressionPtr conversion(const Token& at, Type type, ExpressionPtr operand) {
        ExpressionPtr result = make(Kind::Convert, at, std::move(operand));
        result->type = type;
        return result;
    }

    ExpressionPtr parseVariable() {
        const Token at = take();
        if (here().is("[")) {
            failHere("");
        }
        ExpressionPtr variable = make(Kind::Variable, at.place);
        variable->name = at.text;
        return variable;
    }

    ExpressionPtr parseName() {
        refuseWord(here());
        const Token at = take();
        if (const auto boolean = kBooleans.find(at.text); boolean != kBooleans.end()) {
            return constant(at.place, boolean->second);
        }
        if (!here().is("(")) {
            ExpressionPtr attribute = make(Kind::Name, at.place);
            attribute->name = at.text;
            return attribute;
        }
        take();
        ExpressionPtr call = make(Kind::Call, at.place);
        while (!here().is(")")) {
            call->operands.push_back(parseValue());
            call->depth = std::max(call->depth, call->operands.back()->depth + 1);
            if (!here().is(")")) {
                expect(",");
            }
        }
        take();
        if (const auto type = kTypes.find(at.text); type != kTypes.end()) {
            if (call->operands.size() != 1) {
                failAt(at, "a conversion takes one value");
            }
            return conversion(at, type->second, std::move(call->operands[0]));
        }
        call->name = at.text;
        return call;
    }

    static int integer(const Token& token) {
        const bool isHex = token.text.size() > 2 && (token.text[1] == 'x' || token.text[1] == 'X');
        int value = 0;
        const char* end = token.text.data() + token.text.size();
        const auto [stop, error] = std::from_chars(token.text.data() + (isHex ? 2 : 0), end, value, isHex ? 16 : 10);
        if (error != std::errc() || stop != end) {
            failAt(token, "beyond a 32-bit integer: write it with a point, as a float");
        }
        return value;
    }

    static double number(const Token& token) {
        double value = 0.0;
        const auto [stop, error] = std::from_chars(token.text.data(), token.text.data() + token.text.size(), value);
        if (error != std::errc() || stop != token.text.data() + token.text.size()) {
            failAt(token, "beyond what a float holds");
        }
        return value;
    }

    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int level_ = 0;
};

} // namespace

StatementPtr parseExpression(const std::string& source) {
    return Parser(source).parse();
}

} // namespace zent
