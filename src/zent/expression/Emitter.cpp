#include "zent/expression/Emitter.h"

#include "zent/expression/Builtin.h"
#include "zent/expression/Opcode.h"

#include <algorithm>
#include <map>
#include <utility>

namespace zent {

namespace {

using Kind = Expression::Kind;

constexpr int kMaxSlot = 0xFF;
// Behind it, positions would be the numbers of built-ins.
constexpr std::size_t kMaxCode = 0xFF00;

// A double as the integer that it is cut to, from the highest bit down; of what no integer holds, and of NaN, the
// lowest integer. Slot 0 is the number, slot 1 the integer, slot 2 the bit.
const char* const kToInteger = R"(
        load 0
        const 2147483648.0
        lt
        load 0
        const -2147483648.0
        gt
        and
        unless beyond
        const 0
        const 1073741824
again:  load 2
        const 0
        eq
        not
        unless done
        load 1
        load 2
        add
        load 0
        call 1 abs
        gt
        not
        unless next
        load 1
        load 2
        add
        store 1
        pop
next:   load 2
        const 2
        div
        store 2
        pop
        back again
done:   load 1
        load 0
        call 1 sign
        mul
        return
beyond: const -2147483648
        return
)";

class Emitter {
public:
    explicit Emitter(std::vector<SourceMark>& marks) : marks_(marks) {}

    Program emit(const Statement& program) {
        emitBlock(program);
        emitOpcode(Opcode::End);
        if (!integerCalls_.empty()) {
            appendToInteger();
        }
        return std::move(program_);
    }

private:
    // A jump that waits for its target: where its operand lies.
    using Jump = std::size_t;

    // What leaves a loop, and the stack that it finds there.
    struct Loop {
        int height;
        std::vector<Jump> breaks;
        std::vector<Jump> continues;
    };

    [[noreturn]] void failTooLarge(const std::string& problem) const {
        throw ExpressionError{place_.line, place_.column, "the expression", problem};
    }

    // Code

    void emitByte(int byte) {
        if (program_.code.size() >= kMaxCode) {
            failTooLarge("too long for byte code, which ends at " + std::to_string(kMaxCode) + " bytes: split it");
        }
        program_.code.push_back(static_cast<unsigned char>(byte));
    }

    // An instruction without operands that changes the stack by so many values.
    void emitOpcode(Opcode opcode, int change = 0) {
        emitByte(static_cast<int>(opcode));
        height_ += change;
    }

    void emitWithByte(Opcode opcode, int operand, int change) {
        emitOpcode(opcode, change);
        emitByte(operand);
    }

    void emitWord(std::size_t word) {
        emitByte(static_cast<int>(word >> 8U));
        emitByte(static_cast<int>(word & 0xFFU));
    }

    void emitConstant(const Value& value) {
        const auto [item, isNew] = pool_.emplace(toText(value), program_.constants.size());
        if (isNew) {
            if (program_.constants.size() > 0xFF) {
                failTooLarge("more than 256 different constants: feed some as inputs");
            }
            program_.constants.push_back(value);
        }
        emitWithByte(Opcode::Constant, static_cast<int>(item->second), 1);
    }

    void emitSlot(Opcode opcode, int slot, int change) {
        if (slot > kMaxSlot) {
            failTooLarge("more than 256 variables and values at once: split it");
        }
        emitWithByte(opcode, slot, change);
    }

    void load(int slot) { emitSlot(Opcode::Load, slot, 1); }

    void pop(int count) {
        for (int i = 0; i < count; ++i) {
            emitOpcode(Opcode::Pop, -1);
        }
    }

    // The top takes the place of the values down to `slot`.
    void sink(int slot) {
        emitSlot(Opcode::Store, slot, 0);
        pop(height_ - 1 - slot);
    }

    void call(const char* name, int count) {
        emitWithByte(Opcode::Call, count, 1 - count);
        emitWord(Builtin::LUT_address().at(name));
    }

    Jump jump(Opcode opcode) {
        emitOpcode(opcode, opcode == Opcode::JumpUnless ? -1 : 0);
        emitWord(0);
        return program_.code.size() - 2;
    }

    void setWord(std::size_t position, std::size_t word) {
        program_.code[position] = static_cast<unsigned char>(word >> 8U);
        program_.code[position + 1] = static_cast<unsigned char>(word & 0xFFU);
    }

    void land(Jump jump) { setWord(jump, program_.code.size() - jump - 2); }

    void land(const std::vector<Jump>& jumps) {
        for (const Jump waiting : jumps) {
            land(waiting);
        }
    }

    void jumpBack(std::size_t target) {
        emitOpcode(Opcode::JumpBack);
        emitWord(program_.code.size() + 2 - target);
    }

    // The routine's constants join the program's, its code stands behind the end.
    void appendToInteger() {
        const Program routine = assemble(kToInteger);
        const std::size_t start = program_.code.size();
        const auto constants = routine.constants;
        std::vector<unsigned char> code = routine.code;
        for (std::size_t i = 0; i < code.size(); i += instructionSize(code[i])) {
            if (static_cast<Opcode>(code[i]) == Opcode::Constant) {
                emitConstant(constants[code[i + 1]]);
                code[i + 1] = program_.code.back();
                program_.code.resize(start);
            }
        }
        for (const unsigned char byte : code) {
            emitByte(byte);
        }
        for (const std::size_t position : integerCalls_) {
            setWord(position, start);
        }
    }

    // Source lines

    void mark(SourcePlace place, bool isStatement) {
        place_ = place;
        if (isStatement ? place.line != lastLine_ : place.line > lastLine_) {
            marks_.push_back({program_.code.size(), place.line});
            lastLine_ = place.line;
        }
    }

    // Statements

    void emitBlock(const Statement& block) {
        const int height = height_;
        for (const StatementPtr& statement : block.bodies) {
            emitStatement(*statement);
        }
        pop(height_ - height);
    }

    void emitStatement(const Statement& statement) {
        if (statement.kind != Statement::Kind::Block) {
            mark(statement.place, true);
        }
        for (const auto& [variable, type] : statement.made) {
            make(variable);
            emitConstant(type == Type::Int ? Value(0) : type == Type::Float ? Value(0.0) : Value(ValueVector{}));
        }
        switch (statement.kind) {
        case Statement::Kind::Declare:
            emit(*statement.value);
            slots_[statement.expression->slot] = height_ - 1; // where the value lies
            break;
        case Statement::Kind::Evaluate:
            emitForEffect(*statement.expression);
            break;
        case Statement::Kind::Block:
            emitBlock(statement);
            break;
        case Statement::Kind::If:
            emitIf(statement);
            break;
        case Statement::Kind::While:
            emitWhile(statement);
            break;
        case Statement::Kind::Do:
            emitDo(statement);
            break;
        case Statement::Kind::For:
            emitFor(statement);
            break;
        case Statement::Kind::Break:
        case Statement::Kind::Continue: {
            const int height = height_;
            pop(height_ - loops_.back().height);
            (statement.kind == Statement::Kind::Break ? loops_.back().breaks : loops_.back().continues)
                .push_back(jump(Opcode::Jump));
            height_ = height; // of what stands behind, though nothing comes there
            break;
        }
        }
    }

    void make(int variable) { slots_[variable] = height_; }

    void emitIf(const Statement& statement) {
        emit(*statement.expression);
        const Jump otherwise = jump(Opcode::JumpUnless);
        emitBlock(*statement.bodies[0]);
        if (statement.bodies.size() == 1) {
            return land(otherwise);
        }
        const Jump end = jump(Opcode::Jump);
        land(otherwise);
        emitBlock(*statement.bodies[1]);
        land(end);
    }

    void emitWhile(const Statement& loop) {
        loops_.push_back({height_, {}, {}});
        const std::size_t top = program_.code.size();
        emit(*loop.expression);
        const Jump end = jump(Opcode::JumpUnless);
        emitBlock(*loop.bodies[0]);
        land(loops_.back().continues);
        jumpBack(top);
        land(end);
        leaveLoop();
    }

    void emitDo(const Statement& loop) {
        loops_.push_back({height_, {}, {}});
        const std::size_t top = program_.code.size();
        emitBlock(*loop.bodies[0]);
        land(loops_.back().continues);
        mark(loop.expression->place, false);
        emit(*loop.expression);
        const Jump end = jump(Opcode::JumpUnless);
        jumpBack(top);
        land(end);
        leaveLoop();
    }

    void emitFor(const Statement& loop) {
        const int height = height_;
        for (const StatementPtr& start : loop.bodies[0]->bodies) {
            emitStatement(*start);
        }
        loops_.push_back({height_, {}, {}});
        const std::size_t top = program_.code.size();
        std::vector<Jump> end;
        if (loop.expression) {
            emit(*loop.expression);
            end.push_back(jump(Opcode::JumpUnless));
        }
        emitBlock(*loop.bodies[2]);
        land(loops_.back().continues);
        emitBlock(*loop.bodies[1]);
        jumpBack(top);
        land(end);
        leaveLoop();
        pop(height_ - height);
    }

    void leaveLoop() {
        land(loops_.back().breaks);
        loops_.pop_back();
    }

    // A value that nothing takes.
    void emitForEffect(const Expression& expression) {
        if (expression.kind == Kind::Assign && expression.operands[0]->kind == Kind::Output) {
            mark(expression.place, false);
            emit(*expression.operands[1]);
            return emitWithByte(Opcode::Output, expression.operands[0]->slot, -1);
        }
        emit(expression);
        pop(1);
    }

    // Values

    void emitOperands(const Expression& expression) {
        for (const ExpressionPtr& operand : expression.operands) {
            emit(*operand);
        }
    }

    // Leaves one value on the stack.
    void emit(const Expression& expression) {
        mark(expression.place, false);
        switch (expression.kind) {
        case Kind::Constant:
            if (expression.type == Type::Bool) {
                return emitOpcode(as<bool>(expression.constant) ? Opcode::True : Opcode::False, 1);
            }
            return emitConstant(expression.constant);
        case Kind::Input:
            return emitWithByte(Opcode::Input, expression.slot, 1);
        case Kind::Output:
            return emitWithByte(Opcode::GetOutput, expression.slot, 1);
        case Kind::Variable:
            return load(slots_.at(expression.slot));
        case Kind::Vector:
            emitOperands(expression);
            return emitOpcode(Opcode::Vector, -2);
        case Kind::Component:
            emitOperands(expression);
            return emitWithByte(Opcode::Component, expression.slot, 0);
        case Kind::Negate:
            return emitNegation(expression);
        case Kind::Not:
            emitOperands(expression);
            return emitOpcode(Opcode::Not);
        case Kind::And:
        case Kind::Or:
            return emitLogic(expression);
        case Kind::Choose:
            return emitChoice(expression);
        case Kind::Assign:
            emit(*expression.operands[1]);
            return store(*expression.operands[0]);
        case Kind::PostStep:
            return emitStep(expression);
        case Kind::Call:
            return emitCall(expression);
        case Kind::Convert:
            emitOperands(expression);
            return emitConversion(expression.operands[0]->type, expression.type);
        default:
            return emitBinary(expression);
        }
    }

    // The target takes the top, which stays.
    void store(const Expression& target) {
        if (target.kind == Kind::Output) {
            load(height_ - 1);
            emitWithByte(Opcode::Output, target.slot, -1);
        } else {
            emitSlot(Opcode::Store, slots_.at(target.slot), 0);
        }
    }

    void loadComponent(int slot, int component) {
        load(slot);
        emitWithByte(Opcode::Component, component, 0);
    }

    void emitNegation(const Expression& negation) {
        emitOperands(negation);
        if (negation.type != Type::Vector) {
            return emitOpcode(Opcode::Negate);
        }
        const int v = height_ - 1;
        for (int component = 0; component < 3; ++component) {
            loadComponent(v, component);
            emitOpcode(Opcode::Negate);
        }
        emitOpcode(Opcode::Vector, -2);
        sink(v);
    }

    void emitLogic(const Expression& logic) {
        const bool isAnd = logic.kind == Kind::And;
        emit(*logic.operands[0]);
        const Jump otherwise = jump(Opcode::JumpUnless);
        if (isAnd) {
            emit(*logic.operands[1]);
        } else {
            emitOpcode(Opcode::True, 1);
        }
        const Jump end = jump(Opcode::Jump);
        --height_; // the other way leaves its own value
        land(otherwise);
        if (isAnd) {
            emitOpcode(Opcode::False, 1);
        } else {
            emit(*logic.operands[1]);
        }
        land(end);
    }

    void emitChoice(const Expression& choice) {
        emit(*choice.operands[0]);
        const Jump otherwise = jump(Opcode::JumpUnless);
        emit(*choice.operands[1]);
        const Jump end = jump(Opcode::Jump);
        --height_;
        land(otherwise);
        emit(*choice.operands[2]);
        land(end);
    }

    void emitStep(const Expression& step) {
        emit(*step.operands[0]);
        load(height_ - 1);
        emit(*step.operands[1]);
        emitOpcode(Opcode::Add, -1);
        store(*step.operands[0]);
        pop(1);
    }

    void emitConversion(Type from, Type to) {
        const int slot = height_ - 1;
        if (to == Type::Bool) {
            emitConstant(0);
            emitOpcode(Opcode::Equal, -1);
            return emitOpcode(Opcode::Not);
        }
        if (to == Type::Vector) {
            load(slot);
            load(slot);
            return emitOpcode(Opcode::Vector, -2);
        }
        if (from == Type::Vector) {
            call("mag", 1);
        }
        if (to == Type::Int) {
            return from == Type::Bool ? call("sign", 1) : callToInteger();
        }
        if (from != Type::Vector) {
            call("trunc", 1); // of a condition or an integer, which makes it a double
        }
    }

    void callToInteger() {
        emitWithByte(Opcode::Call, 1, 0);
        integerCalls_.push_back(program_.code.size());
        emitWord(0);
    }

    void emitBinary(const Expression& binary) {
        emitOperands(binary);
        const Type a = binary.operands[0]->type;
        const Type b = binary.operands[1]->type;
        if (a == Type::Vector || b == Type::Vector) {
            return emitVectors(binary, a, b);
        }
        emitOperation(binary.kind);
    }

    void emitOperation(Kind kind) {
        switch (kind) {
        case Kind::Add:
            return emitOpcode(Opcode::Add, -1);
        case Kind::Subtract:
            return emitOpcode(Opcode::Subtract, -1);
        case Kind::Multiply:
            return emitOpcode(Opcode::Multiply, -1);
        case Kind::Divide:
            return emitOpcode(Opcode::Divide, -1);
        case Kind::Modulo:
            return emitOpcode(Opcode::Modulo, -1);
        case Kind::Less:
        case Kind::GreaterEqual:
            emitOpcode(Opcode::Less, -1);
            break;
        case Kind::Greater:
        case Kind::LessEqual:
            emitOpcode(Opcode::Greater, -1);
            break;
        default:
            emitOpcode(Opcode::Equal, -1);
            break;
        }
        if (kind == Kind::GreaterEqual || kind == Kind::LessEqual || kind == Kind::NotEqual) {
            emitOpcode(Opcode::Not);
        }
    }

    // The machine has no arithmetic of vectors: component by component.
    void emitVectors(const Expression& binary, Type aType, Type bType) {
        const int a = height_ - 2;
        const int b = height_ - 1;
        if (binary.kind == Kind::Cross) {
            return call("cross", 2);
        }
        if (binary.type == Type::Float) {
            return call("dot", 2);
        }
        const bool isComparison = binary.type == Type::Bool;
        const auto loadOperand = [this](int slot, Type type, int component) {
            type == Type::Vector ? loadComponent(slot, component) : load(slot);
        };
        for (int component = 0; component < 3; ++component) {
            loadOperand(a, aType, component);
            loadOperand(b, bType, component);
            emitOperation(isComparison ? Kind::Equal : binary.kind);
            if (isComparison && component > 0) {
                emitOpcode(Opcode::And, -1);
            }
        }
        if (!isComparison) {
            emitOpcode(Opcode::Vector, -2);
        } else if (binary.kind == Kind::NotEqual) {
            emitOpcode(Opcode::Not);
        }
        sink(a);
    }

    static bool hasEffect(const Expression& expression) {
        return expression.kind == Kind::Assign || expression.kind == Kind::PostStep ||
               std::any_of(expression.operands.begin(), expression.operands.end(),
                           [](const ExpressionPtr& operand) { return hasEffect(*operand); });
    }

    void emitCall(const Expression& expression) {
        const std::string& name = expression.name;
        const std::vector<ExpressionPtr>& arguments = expression.operands;
        if (name == "clamp") {
            return emitClamp(arguments);
        }
        const int first = height_;
        emitOperands(expression);
        if (name == "fmod") {
            emitOpcode(Opcode::Modulo, -1);
        } else if (name == "linstep") {
            emitLinearStep(first);
        } else if (name == "smoothstep") {
            emitLinearStep(first);
            emitSmooth(first);
        } else if (name == "acosd" || name == "asind" || name == "atand" || name == "atan2d") {
            // The language's degrees are the result's; the machine's functions of these names convert the argument.
            call(name.substr(0, name.size() - 1).c_str(), static_cast<int>(arguments.size()));
            call("rad_to_deg", 1);
        } else {
            call(name.c_str(), static_cast<int>(arguments.size()));
            if (name == "sign") {
                call("trunc", 1); // a float to the language, an integer to the machine
            }
        }
    }

    // The language has the bounds first, the machine the value.
    void emitClamp(const std::vector<ExpressionPtr>& arguments) {
        const int low = height_;
        const bool isOrderFree = std::none_of(arguments.begin(), arguments.end(),
                                              [](const ExpressionPtr& argument) { return hasEffect(*argument); });
        if (isOrderFree) {
            emit(*arguments[2]);
            emit(*arguments[0]);
            emit(*arguments[1]);
            return call("clamp", 3);
        }
        for (const ExpressionPtr& argument : arguments) {
            emit(*argument);
        }
        load(low + 2);
        load(low);
        load(low + 1);
        call("clamp", 3);
        sink(low);
    }

    // low high x -> clamp((x - low) / (high - low), 0, 1)
    void emitLinearStep(int low) {
        load(low + 2);
        load(low);
        emitOpcode(Opcode::Subtract, -1);
        load(low + 1);
        load(low);
        emitOpcode(Opcode::Subtract, -1);
        emitOpcode(Opcode::Divide, -1);
        emitConstant(0.0);
        emitConstant(1.0);
        call("clamp", 3);
        sink(low);
    }

    // t -> (3 - 2 t) t t
    void emitSmooth(int t) {
        emitConstant(3.0);
        emitConstant(2.0);
        load(t);
        emitOpcode(Opcode::Multiply, -1);
        emitOpcode(Opcode::Subtract, -1);
        for (int i = 0; i < 2; ++i) {
            load(t);
            emitOpcode(Opcode::Multiply, -1);
        }
        sink(t);
    }

    std::vector<SourceMark>& marks_;
    Program program_;
    std::map<std::string, std::size_t> pool_;
    std::map<int, int> slots_; // of the variables, by their numbers
    std::vector<Loop> loops_;
    std::vector<std::size_t> integerCalls_; // where the position of kToInteger is to stand
    int height_ = 0;                        // of the stack
    SourcePlace place_;
    int lastLine_ = 0;
};

} // namespace

Program emitProgram(const Statement& program, std::vector<SourceMark>& marks) {
    return Emitter(marks).emit(program);
}

} // namespace zent
