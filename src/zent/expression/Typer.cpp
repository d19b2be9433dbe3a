#include "zent/expression/Typer.h"

#include <algorithm>
#include <bitset>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>

namespace zent {

namespace {

using Kind = Expression::Kind;

constexpr std::size_t kSlots = 256; // that an operand byte can name
using Slots = std::bitset<kSlots>;

[[noreturn]] void failAt(const Expression& at, const std::string& thing, const std::string& problem) {
    throw ExpressionError{at.place.line, at.place.column, thing, problem};
}

struct Function {
    std::vector<Type> arguments;
    Type result = Type::Float;
    bool isOwn = false; ///< made of instructions, since the machine has no such function
};

// By the names, arguments and order of arguments of the language; "abs" keeps its argument's type.
const std::map<std::string, Function>& functions() {
    static const auto sFunctions = [] {
        const Type f = Type::Float;
        const Type v = Type::Vector;
        std::map<std::string, Function> table{{"angle", {{v, v}, f}}, {"cross", {{v, v}, v}},  {"dot", {{v, v}, f}},
                                              {"mag", {{v}, f}},      {"rot", {{v, v, f}, v}}, {"unit", {{v}, v}},
                                              {"abs", {{f}, f}}};
        for (const char* name : {"ceil", "floor", "sign", "trunc", "exp",        "log",       "log10", "sqrt",
                                 "cos",  "cosd",  "sin",  "sind",  "tan",        "tand",      "acos",  "acosd",
                                 "asin", "asind", "atan", "atand", "deg_to_rad", "rad_to_deg"}) {
            table[name] = {{f}, f};
        }
        for (const char* name : {"min", "max", "pow", "atan2", "atan2d", "hypot"}) {
            table[name] = {{f, f}, f};
        }
        table["clamp"] = {{f, f, f}, f};
        for (const char* name : {"linstep", "smoothstep"}) {
            table[name] = {{f, f, f}, f, true};
        }
        table["fmod"] = {{f, f}, f, true};
        return table;
    }();
    return sFunctions;
}

// The number in .I[3], -1 for any other name.
int indexOf(const std::string& name, const char* list) {
    int index = 0;
    if (name.compare(0, 3, list) != 0 || name.size() < 5 || name.back() != ']') {
        return -1;
    }
    const char* end = name.data() + name.size() - 1;
    const auto [stop, error] = std::from_chars(name.data() + 3, end, index);
    return error == std::errc() && stop == end ? index : -1;
}

bool isConstant(const Expression& expression) {
    return expression.kind == Kind::Constant;
}

double numberOf(const Expression& constant) {
    return toNumber(constant.constant);
}

class Typer {
public:
    explicit Typer(const ExpressionPlugs& plugs) : plugs_(plugs) {}

    void type(Statement& program) {
        typeBlock(program);
        for (std::size_t slot = 0; slot < kSlots; ++slot) {
            if (writes_[slot] != nullptr && !assigned_[slot]) {
                failAt(*writes_[slot], writes_[slot]->name,
                       "not assigned on every path, and byte code does not keep the value of an earlier evaluation: "
                       "assign it before the condition, too");
            }
        }
    }

private:
    // A loop's exits: what is assigned at each break and each continue.
    struct Loop {
        Slots atBreak = Slots().set();
        Slots atContinue = Slots().set();
    };

    // Statements

    void typeBlock(Statement& block) {
        scopes_.emplace_back();
        for (const StatementPtr& statement : block.bodies) {
            typeStatement(*statement);
        }
        scopes_.pop_back();
    }

    void typeStatement(Statement& statement) {
        std::vector<std::pair<int, Type>> made;
        std::swap(made, made_);
        switch (statement.kind) {
        case Statement::Kind::Declare:
            typeDeclaration(statement);
            break;
        case Statement::Kind::Evaluate:
            typeEvaluation(statement);
            break;
        case Statement::Kind::Block:
            typeBlock(statement);
            break;
        case Statement::Kind::If:
            typeIf(statement);
            break;
        case Statement::Kind::While:
        case Statement::Kind::Do:
        case Statement::Kind::For:
            typeLoop(statement);
            break;
        case Statement::Kind::Break:
        case Statement::Kind::Continue:
            leaveLoop(statement);
            break;
        }
        if (statement.kind != Statement::Kind::If && statement.kind != Statement::Kind::Block) {
            statement.made.insert(statement.made.end(), made_.begin(), made_.end());
        }
        std::swap(made, made_);
    }

    int newVariable(const std::string& name, Type type) {
        variables_.push_back(type);
        const int number = static_cast<int>(variables_.size()) - 1;
        scopes_.back()[name] = number;
        return number;
    }

    int find(const std::string& name) const {
        for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
            if (const auto variable = scope->find(name); variable != scope->end()) {
                return variable->second;
            }
        }
        return -1;
    }

    void typeDeclaration(Statement& statement) {
        Expression& variable = *statement.expression;
        const Type type = *statement.type;
        if (statement.value) {
            typeValue(statement.value);
            convert(statement.value, type);
        }
        if (scopes_.back().count(variable.name) != 0) {
            failAt(variable, variable.name, "declared twice: assign it without its type");
        }
        if (isForStart_ && find(variable.name) >= 0) {
            failAt(variable, variable.name, "declared before the loop, too: assign it without its type");
        }
        if (!statement.value) {
            statement.value = std::make_unique<Expression>(Kind::Constant, variable.place);
            statement.value->constant = type == Type::Int     ? Value(0)
                                        : type == Type::Float ? Value(0.0)
                                                              : Value(ValueVector{});
            statement.value->type = type;
        }
        variable.slot = newVariable(variable.name, type);
        variable.type = type;
    }

    // A variable that is assigned for the first time is declared by it, with the value's type.
    void typeEvaluation(Statement& statement) {
        Expression& expression = *statement.expression;
        if (expression.kind == Kind::Assign && expression.operands[0]->kind == Kind::Variable &&
            find(expression.operands[0]->name) < 0) {
            ExpressionPtr value = std::move(expression.operands[1]);
            ExpressionPtr variable = std::move(expression.operands[0]);
            typeValue(value);
            if (find(variable->name) < 0) {
                statement.kind = Statement::Kind::Declare;
                toNumeric(value);
                statement.type = value->type;
                statement.expression = std::move(variable);
                statement.value = std::move(value);
                statement.expression->slot = newVariable(statement.expression->name, *statement.type);
                statement.expression->type = *statement.type;
                return;
            }
            expression.operands[0] = std::move(variable); // the value itself declared it
            expression.operands[1] = std::move(value);
            finishAssign(expression);
            return;
        }
        typeValue(statement.expression);
    }

    void typeIf(Statement& statement) {
        typeValue(statement.expression);
        statement.made = made_;
        toBool(statement.expression);
        const Slots before = assigned_;
        typeBlock(*statement.bodies[0]);
        const Slots after = assigned_;
        assigned_ = before;
        if (statement.bodies.size() > 1) {
            typeBlock(*statement.bodies[1]);
        }
        assigned_ &= after;
    }

    void typeCondition(Statement& statement) {
        if (statement.expression) {
            typeValue(statement.expression);
            toBool(statement.expression);
        }
    }

    void typeLoop(Statement& statement) {
        scopes_.emplace_back();
        if (statement.kind == Statement::Kind::For) {
            isForStart_ = true;
            for (const StatementPtr& start : statement.bodies[0]->bodies) {
                typeStatement(*start);
            }
            isForStart_ = false;
        }
        if (statement.kind != Statement::Kind::Do) {
            typeCondition(statement);
        }
        const Slots skipped = statement.expression ? assigned_ : Slots().set();
        loops_.emplace_back();
        typeBlock(*statement.bodies.back());
        assigned_ &= loops_.back().atContinue;
        if (statement.kind == Statement::Kind::For) {
            typeBlock(*statement.bodies[1]);
        }
        if (statement.kind == Statement::Kind::Do) {
            typeCondition(statement);
        } else {
            assigned_ = skipped;
        }
        assigned_ &= loops_.back().atBreak;
        loops_.pop_back();
        scopes_.pop_back();
    }

    void leaveLoop(const Statement& statement) {
        if (loops_.empty()) {
            throw ExpressionError{statement.place.line, statement.place.column,
                                  statement.kind == Statement::Kind::Break ? "break" : "continue", "outside a loop"};
        }
        Slots& exit = statement.kind == Statement::Kind::Break ? loops_.back().atBreak : loops_.back().atContinue;
        exit &= assigned_;
        assigned_.set(); // nothing comes from here
    }

    // Conversions

    static void wrap(ExpressionPtr& value, Type type) {
        auto conversion = std::make_unique<Expression>(Kind::Convert, value->place);
        conversion->type = type;
        conversion->operands.push_back(std::move(value));
        value = std::move(conversion);
    }

    static void setConstant(Expression& expression, Value value) {
        expression.kind = Kind::Constant;
        expression.constant = value;
        expression.operands.clear();
        constexpr Type kTypes[] = {Type::Bool, Type::Int, Type::Float, Type::Vector};
        expression.type = kTypes[value.index()];
    }

    static bool convertConstant(Expression& value, Type type) {
        if (!isConstant(value) || value.type == Type::Vector) {
            return false;
        }
        const double number = numberOf(value);
        switch (type) {
        case Type::Bool:
            setConstant(value, number != 0.0);
            return true;
        case Type::Int:
            if (!(std::abs(number) <= std::numeric_limits<int>::max())) {
                return false;
            }
            setConstant(value, static_cast<int>(number));
            return true;
        case Type::Float:
            setConstant(value, number);
            return true;
        default:
            setConstant(value, ValueVector{number, number, number});
            return true;
        }
    }

    static void convert(ExpressionPtr& value, Type type) {
        if (value->type != type && !convertConstant(*value, type)) {
            wrap(value, type);
        }
    }

    static void toBool(ExpressionPtr& value) {
        if (value->type == Type::Vector) {
            failAt(*value, "the condition", "a vector is neither true nor false: compare its length, mag($v) > 0");
        }
        convert(value, Type::Bool);
    }

    // A condition counts as the integer 1 or 0.
    static void toNumeric(ExpressionPtr& value) {
        if (value->type == Type::Bool) {
            convert(value, Type::Int);
        }
    }

    // Values

    void typeOperands(Expression& expression) {
        for (ExpressionPtr& operand : expression.operands) {
            typeValue(operand);
        }
    }

    void typeValue(ExpressionPtr& value) {
        Expression& expression = *value;
        switch (expression.kind) {
        case Kind::Constant:
            setConstant(expression, Value(expression.constant));
            break;
        case Kind::Name:
            typeName(value);
            break;
        case Kind::Variable:
            expression.slot = find(expression.name);
            if (expression.slot < 0) {
                failAt(expression, expression.name, "not declared here: assign it before, in this block or around it");
            }
            expression.type = variables_[static_cast<std::size_t>(expression.slot)];
            break;
        case Kind::Vector:
            typeVector(expression);
            break;
        case Kind::Component:
            typeComponent(expression);
            break;
        case Kind::Negate:
            typeNegation(expression);
            break;
        case Kind::Not:
            typeOperands(expression);
            toBool(expression.operands[0]);
            expression.type = Type::Bool;
            break;
        case Kind::And:
        case Kind::Or: {
            typeValue(expression.operands[0]);
            toBool(expression.operands[0]);
            const Slots before = assigned_;
            typeValue(expression.operands[1]);
            toBool(expression.operands[1]);
            assigned_ = before; // the right side may be left out
            expression.type = Type::Bool;
            break;
        }
        case Kind::Choose:
            typeChoice(expression);
            break;
        case Kind::Assign:
            typeAssign(expression);
            break;
        case Kind::PostStep:
            typeStep(expression);
            break;
        case Kind::Call:
            typeCall(expression);
            break;
        case Kind::Convert: {
            const Type type = expression.type;
            typeOperands(expression);
            ExpressionPtr operand = std::move(expression.operands[0]);
            convert(operand, type);
            value = std::move(operand);
            break;
        }
        case Kind::Input:
        case Kind::Output:
            break;
        default:
            typeBinary(expression);
            break;
        }
    }

    // The slot of a name, -1 if the list lacks it.
    static int slotIn(const std::vector<std::string>& list, const std::string& name, const char* direct) {
        const int index = indexOf(name, direct);
        const std::size_t slot =
            index >= 0 ? static_cast<std::size_t>(index)
                       : static_cast<std::size_t>(std::find(list.begin(), list.end(), name) - list.begin());
        return slot < list.size() ? static_cast<int>(slot) : -1;
    }

    static void setSlot(Expression& expression, Kind kind, int slot, const char* what) {
        if (slot >= static_cast<int>(kSlots)) {
            failAt(expression, expression.name, std::string("byte code has slots for 256 ") + what + " only");
        }
        expression.kind = kind;
        expression.slot = slot;
        expression.type = Type::Float;
    }

    void typeName(ExpressionPtr& value) {
        Expression& name = *value;
        if (const int output = slotIn(plugs_.outputs, name.name, ".O["); output >= 0) {
            setSlot(name, Kind::Output, output, "outputs");
            if (!assigned_[static_cast<std::size_t>(output)]) {
                failAt(name, name.name,
                       "read before it is assigned on every path: that is the value of the earlier evaluation, which "
                       "byte code does not keep");
            }
            return;
        }
        if (const int input = slotIn(plugs_.inputs, name.name, ".I["); input >= 0) {
            return setSlot(name, Kind::Input, input, "inputs");
        }
        const int frame = slotIn(plugs_.inputs, "frame", ".I[");
        if (name.name == "time" && frame >= 0 && plugs_.framesPerSecond > 0.0) {
            auto seconds = std::make_unique<Expression>(Kind::Divide, name.place);
            auto rate = std::make_unique<Expression>(Kind::Constant, name.place);
            setConstant(*rate, plugs_.framesPerSecond);
            seconds->type = Type::Float;
            setSlot(name, Kind::Input, frame, "inputs");
            seconds->operands.push_back(std::move(value));
            seconds->operands.push_back(std::move(rate));
            value = std::move(seconds);
            return;
        }
        if (name.name == "time" || name.name == "frame" || name.name.find('.') != std::string::npos) {
            failAt(name, name.name, "none of the expression's inputs: connect it, or name it among them");
        }
        failAt(name, name.name, "no attribute: write node.attribute, or $" + name.name + " for a variable");
    }

    void typeVector(Expression& vector) {
        typeOperands(vector);
        bool areConstant = true;
        for (ExpressionPtr& component : vector.operands) {
            if (component->type == Type::Vector) {
                convert(component, Type::Float);
            }
            areConstant = areConstant && isConstant(*component);
        }
        vector.type = Type::Vector;
        if (areConstant) {
            setConstant(vector, ValueVector{numberOf(*vector.operands[0]), numberOf(*vector.operands[1]),
                                            numberOf(*vector.operands[2])});
        }
    }

    void typeComponent(Expression& component) {
        typeOperands(component);
        if (component.operands[0]->type != Type::Vector) {
            failAt(component, std::string(".") + "xyz"[component.slot], "only a vector has components");
        }
        component.type = Type::Float;
    }

    void typeNegation(Expression& negation) {
        typeOperands(negation);
        toNumeric(negation.operands[0]);
        const Expression& operand = *negation.operands[0];
        negation.type = operand.type;
        if (!isConstant(operand)) {
            return;
        }
        switch (negation.type) {
        case Type::Int:
            setConstant(negation, static_cast<int>(0U - static_cast<unsigned>(as<int>(operand.constant))));
            break;
        case Type::Float:
            setConstant(negation, -as<double>(operand.constant));
            break;
        default: {
            const ValueVector v = as<ValueVector>(operand.constant);
            setConstant(negation, ValueVector{-v.x, -v.y, -v.z});
            break;
        }
        }
    }

    void typeChoice(Expression& choice) {
        typeValue(choice.operands[0]);
        toBool(choice.operands[0]);
        const Slots before = assigned_;
        typeValue(choice.operands[1]);
        const Slots after = assigned_;
        assigned_ = before;
        typeValue(choice.operands[2]);
        assigned_ &= after;
        choice.type = std::max({choice.operands[1]->type, choice.operands[2]->type, Type::Int});
        convert(choice.operands[1], choice.type);
        convert(choice.operands[2], choice.type);
    }

    // The target of an assignment; one that is read before has been typed there.
    void typeTarget(Expression& target, Type type) {
        if (target.kind == Kind::Variable) {
            target.slot = find(target.name);
            if (target.slot < 0) {
                target.slot = newVariable(target.name, type == Type::Bool ? Type::Int : type);
                made_.emplace_back(target.slot, variables_.back());
            }
            target.type = variables_[static_cast<std::size_t>(target.slot)];
            return;
        }
        const int output = slotIn(plugs_.outputs, target.name, ".O[");
        if (output < 0) {
            failAt(target, target.name,
                   target.name.find('.') == std::string::npos
                       ? "no attribute: write node.attribute, or $" + target.name + " for a variable"
                       : std::string("none of the expression's outputs: connect it, or name it among them"));
        }
        setSlot(target, Kind::Output, output, "outputs");
        assigned_.set(static_cast<std::size_t>(output));
        if (writes_[static_cast<std::size_t>(output)] == nullptr) {
            writes_[static_cast<std::size_t>(output)] = &target;
        }
    }

    void typeAssign(Expression& assign) {
        typeValue(assign.operands[1]);
        finishAssign(assign);
    }

    void finishAssign(Expression& assign) {
        Expression& target = *assign.operands[0];
        typeTarget(target, assign.operands[1]->type);
        convert(assign.operands[1], target.type);
        assign.type = target.type;
    }

    void typeStep(Expression& step) {
        typeValue(step.operands[0]);
        step.type = step.operands[0]->type;
        setConstant(*step.operands[1], Value(step.operands[1]->constant));
        if (step.type == Type::Vector) {
            failAt(step, "++", "a vector cannot be stepped: add to it");
        }
    }

    static bool isCompared(Kind kind) { return kind >= Kind::Less && kind <= Kind::NotEqual; }

    static const char* symbolOf(Kind kind) {
        constexpr const char* kSymbols[] = {"*", "/", "%", "^", "+", "-", "<", "<=", ">", ">=", "==", "!="};
        return kSymbols[static_cast<int>(kind) - static_cast<int>(Kind::Multiply)];
    }

    void typeBinary(Expression& binary) {
        typeOperands(binary);
        ExpressionPtr& a = binary.operands[0];
        ExpressionPtr& b = binary.operands[1];
        toNumeric(a);
        toNumeric(b);
        const int vectors = (a->type == Type::Vector ? 1 : 0) + (b->type == Type::Vector ? 1 : 0);
        if (binary.kind == Kind::Cross && vectors != 2) {
            failAt(binary, "^", "the cross product of two vectors: for a power, write pow(a, b)");
        }
        if (vectors > 0) {
            typeVectors(binary, vectors == 2);
            return;
        }
        binary.type = isCompared(binary.kind) ? Type::Bool : std::max(a->type, b->type);
        fold(binary);
    }

    void typeVectors(Expression& binary, bool areBoth) {
        ExpressionPtr& a = binary.operands[0];
        ExpressionPtr& b = binary.operands[1];
        const auto refuse = [&binary](const char* problem) { failAt(binary, symbolOf(binary.kind), problem); };
        binary.type = Type::Vector;
        switch (binary.kind) {
        case Kind::Add:
        case Kind::Subtract:
            convert(a, Type::Vector);
            convert(b, Type::Vector);
            break;
        case Kind::Multiply:
            binary.type = areBoth ? Type::Float : Type::Vector; // the dot product
            break;
        case Kind::Divide:
            if (b->type == Type::Vector) {
                refuse("nothing divides by a vector here: divide its components");
            }
            convert(b, Type::Float);
            break;
        case Kind::Cross:
            break;
        case Kind::Equal:
        case Kind::NotEqual:
            if (!areBoth) {
                refuse("a vector and a number are compared: compare a component, or mag($v)");
            }
            binary.type = Type::Bool;
            break;
        case Kind::Modulo:
            refuse("takes numbers: take the remainder of each component");
            break;
        default:
            refuse("vectors have no order here: compare a component, or mag($v)");
            break;
        }
    }

    // Of numbers, where the machine would come to the same.
    static void fold(Expression& binary) {
        const Expression& a = *binary.operands[0];
        const Expression& b = *binary.operands[1];
        const bool divides = binary.kind == Kind::Divide || binary.kind == Kind::Modulo;
        if (divides && binary.type == Type::Int && isConstant(b) && as<int>(b.constant) == 0) {
            failAt(binary, symbolOf(binary.kind), "an integer is divided by zero");
        }
        if (!isConstant(a) || !isConstant(b)) {
            return;
        }
        if (binary.type == Type::Int) {
            foldIntegers(binary, as<int>(a.constant), as<int>(b.constant));
        } else if (binary.type == Type::Float) {
            const double x = numberOf(a);
            const double y = numberOf(b);
            const double result = binary.kind == Kind::Add        ? x + y
                                  : binary.kind == Kind::Subtract ? x - y
                                  : binary.kind == Kind::Multiply ? x * y
                                  : binary.kind == Kind::Divide   ? x / y
                                                                  : std::fmod(x, y);
            if (std::isfinite(result)) {
                setConstant(binary, result);
            }
        }
    }

    static void foldIntegers(Expression& binary, int a, int b) {
        const auto x = static_cast<unsigned>(a);
        const auto y = static_cast<unsigned>(b);
        switch (binary.kind) {
        case Kind::Add:
            return setConstant(binary, static_cast<int>(x + y));
        case Kind::Subtract:
            return setConstant(binary, static_cast<int>(x - y));
        case Kind::Multiply:
            return setConstant(binary, static_cast<int>(x * y));
        default:
            if (b != -1) { // which may overflow
                setConstant(binary, binary.kind == Kind::Divide ? a / b : a % b);
            }
        }
    }

    void typeCall(Expression& call) {
        const auto found = functions().find(call.name);
        if (found == functions().end()) {
            failAt(call, call.name,
                   "no function of byte code (a procedure, a command, or random or noise): feed its value as an input");
        }
        const Function& function = found->second;
        if (call.operands.size() != function.arguments.size()) {
            failAt(call, call.name,
                   "takes " + std::to_string(function.arguments.size()) + " arguments, not " +
                       std::to_string(call.operands.size()));
        }
        typeOperands(call);
        call.type = function.result;
        if (call.name == "abs") {
            toNumeric(call.operands[0]);
            call.type = call.operands[0]->type;
            return;
        }
        for (std::size_t i = 0; i < call.operands.size(); ++i) {
            ExpressionPtr& argument = call.operands[i];
            // The machine's own functions take conditions and integers for numbers.
            if (function.isOwn || function.arguments[i] == Type::Vector || argument->type == Type::Vector ||
                isConstant(*argument)) {
                convert(argument, function.arguments[i]);
            }
        }
    }

    const ExpressionPlugs& plugs_;
    std::vector<std::map<std::string, int>> scopes_;
    std::vector<Type> variables_;
    std::vector<std::pair<int, Type>> made_; // by the present statement
    std::vector<Loop> loops_;
    Slots assigned_;
    const Expression* writes_[kSlots] = {};
    bool isForStart_ = false;
};

} // namespace

void typeProgram(Statement& program, const ExpressionPlugs& plugs) {
    Typer(plugs).type(program);
}

} // namespace zent
