#include "zent/expression/DecodedCode.h"

#include "zent/expression/fusedArithmetic.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace zent {

namespace {

constexpr std::size_t kMaxOperands = 256; // of one byte

std::int16_t inPool(std::size_t index) {
    return static_cast<std::int16_t>(-1 - static_cast<int>(index));
}

// How many values of the frame an operand asks for.
int neededFor(std::int16_t operand) {
    return std::max(operand + 1, 0);
}

Action::Kind formOf(Action::Kind family, int form) {
    return static_cast<Action::Kind>(static_cast<int>(family) + form);
}

Instruction leave() {
    Instruction instruction;
    instruction.action = Action::Leave;
    return instruction;
}

} // namespace

DecodedCode::DecodedCode(const std::vector<unsigned char>& code, const std::vector<Value>& constants,
                         const svec<float, 16>& inputs)
    : code_(code), constants_(std::min(constants.size(), kMaxOperands)), inputs_(std::min(inputs.size(), kMaxOperands)),
      instructions_(code.size() + 1) {
    pool_.reserve(constants_ + inputs_ + 2);
    pool_.assign(constants.begin(), constants.begin() + static_cast<std::ptrdiff_t>(constants_));
    for (std::size_t i = 0; i < inputs_; ++i) {
        pool_.emplace_back(static_cast<double>(inputs[i]));
    }
    pool_.emplace_back(true);
    pool_.emplace_back(false);
}

bool DecodedCode::takeInputs(const svec<float, 16>& inputs) {
    if (std::min(inputs.size(), kMaxOperands) != inputs_) {
        return false;
    }
    for (std::size_t i = 0; i < inputs_; ++i) {
        pool_[constants_ + i] = static_cast<double>(inputs[i]);
    }
    return true;
}

bool DecodedCode::isAt(std::size_t position, Opcode opcode) const {
    return position < code_.size() && code_[position] == static_cast<unsigned char>(opcode);
}

std::optional<DecodedCode::Operand> DecodedCode::operandAt(std::size_t position) const {
    if (isAt(position, Opcode::True) || isAt(position, Opcode::False)) {
        return Operand{inPool(constants_ + inputs_ + (isAt(position, Opcode::False) ? 1 : 0)), position + 1};
    }
    if (position + 1 >= code_.size()) {
        return std::nullopt;
    }
    const std::size_t index = code_[position + 1];
    if (isAt(position, Opcode::Load)) {
        return Operand{static_cast<std::int16_t>(index), position + 2};
    }
    if (isAt(position, Opcode::Input) && index < inputs_) {
        return Operand{inPool(constants_ + index), position + 2};
    }
    if (isAt(position, Opcode::Constant) && index < constants_ && !std::holds_alternative<UnknownValue>(pool_[index])) {
        return Operand{inPool(index), position + 2};
    }
    return std::nullopt;
}

std::optional<Action::Kind> DecodedCode::binaryAt(std::size_t position) const {
    if (position >= code_.size()) {
        return std::nullopt;
    }
    switch (static_cast<Opcode>(code_[position])) {
    case Opcode::Add:
        return Action::Add;
    case Opcode::Subtract:
        return Action::Subtract;
    case Opcode::Multiply:
        return Action::Multiply;
    case Opcode::Divide:
        return Action::Divide;
    case Opcode::Equal:
        return Action::Equal;
    case Opcode::Greater:
        return Action::Greater;
    case Opcode::Less:
        return Action::Less;
    default:
        return std::nullopt;
    }
}

// Where the jump at a position leads, if that lies within the code.
std::optional<std::size_t> DecodedCode::jumpTarget(std::size_t position) const {
    if (position + 2 >= code_.size()) {
        return std::nullopt;
    }
    const std::size_t behind = position + 3;
    const std::size_t offset = static_cast<std::size_t>(code_[position + 1]) << 8U | code_[position + 2];
    const bool isBack = isAt(position, Opcode::JumpBack);
    if (isBack ? offset > behind : behind + offset >= code_.size()) {
        return std::nullopt;
    }
    return isBack ? behind - offset : behind + offset;
}

// A jump that stands next is taken at once.
void DecodedCode::goOn(Instruction& instruction, std::size_t next) const {
    if (isAt(next, Opcode::Jump) || isAt(next, Opcode::JumpBack)) {
        if (const auto target = jumpTarget(next)) {
            ++instruction.steps;
            next = *target;
        }
    }
    instruction.next = at(next);
}

void DecodedCode::decode(std::size_t position) {
    if (const auto fused = decodeFused(position)) {
        instructions_[position] = *fused;
    } else {
        decodeApart(position);
    }
}

void DecodedCode::decodeApart(std::size_t position) {
    const auto first = operandAt(position);
    instructions_[position] = first ? decodeOperand(*first) : decodeOpcode(position);
}

// Operands (v) and operations of arithmetic (o), of whose results nothing else sees any but the last.
std::optional<Instruction> DecodedCode::decodeFused(std::size_t position) const {
    constexpr struct {
        std::string_view tokens;
        Fusion fusion;
        int taken; // from the stack
    } kPatterns[] = {{"vovo", Fusion::OnTop, 1},
                     {"vvoo", Fusion::AfterTop, 1},
                     {"vvovo", Fusion::WithThird, 0},
                     {"vvovvoo", Fusion::OfPairs, 0}};
    if (!operandAt(position)) {
        return std::nullopt;
    }
    std::string tokens;
    svec<std::int16_t, 8> operands;
    svec<Action::Kind, 8> operations;
    for (const auto& pattern : kPatterns) {
        while (tokens.size() < pattern.tokens.size()) {
            if (const auto operand = operandAt(position)) {
                operands.push_back(operand->value);
                position = operand->next;
                tokens += 'v';
                continue;
            }
            const auto family = binaryAt(position);
            if (!family || *family >= Action::Equal) {
                return std::nullopt;
            }
            operations.push_back(*family);
            ++position;
            tokens += 'o';
        }
        if (tokens != pattern.tokens) {
            continue;
        }
        Instruction instruction;
        instruction.action = Action::Fused;
        instruction.fused = fusedArithmetic(pattern.fusion, operations.back(), operations[0], operations[1]);
        int needed = pattern.taken;
        for (const std::int16_t operand : operands) {
            needed = std::max(needed, neededFor(operand));
        }
        operands.resize(4);
        instruction.a = operands[0];
        instruction.b = operands[1];
        instruction.c = operands[2];
        instruction.d = operands[3];
        instruction.steps = static_cast<std::uint8_t>(tokens.size());
        instruction.to = -1;
        takeStore(instruction, position, needed, pattern.taken);
        return instruction;
    }
    return std::nullopt;
}

// The end of an instruction that takes so many values from the stack and leaves one: where a store and a pop stand
// next, they are a part of it.
bool DecodedCode::takeStore(Instruction& instruction, std::size_t next, int needed, int taken) const {
    const bool isStored = isAt(next, Opcode::Store) && isAt(next + 2, Opcode::Pop);
    if (isStored) {
        instruction.steps = static_cast<std::uint8_t>(instruction.steps + 2);
        instruction.to = code_[next + 1];
        needed = std::max(needed, instruction.to + std::max(taken, 1)); // with two values the slot lies below
        next += 3;
    }
    instruction.needed = static_cast<std::uint16_t>(needed);
    goOn(instruction, next);
    return isStored;
}

Instruction DecodedCode::decodeOperand(const Operand& first) const {
    if (const auto family = binaryAt(first.next)) {
        return decodeBinary(*family, first.next + 1, 1, 0, first.value);
    }
    const auto second = operandAt(first.next);
    if (const auto family = second ? binaryAt(second->next) : std::nullopt) {
        return decodeBinary(*family, second->next + 1, 2, first.value, second->value);
    }
    Instruction instruction;
    instruction.a = first.value;
    instruction.needed = static_cast<std::uint16_t>(neededFor(first.value));
    instruction.steps = 2;
    if (isAt(first.next, Opcode::Component) && first.next + 1 < code_.size()) {
        instruction.action = Action::ComponentOf;
        instruction.b = code_[first.next + 1];
        goOn(instruction, first.next + 2);
        return instruction;
    }
    if (isAt(first.next, Opcode::Output) && first.next + 1 < code_.size()) {
        instruction.action = Action::OutputOf;
        instruction.b = code_[first.next + 1];
        goOn(instruction, first.next + 2);
        return instruction;
    }
    if (isAt(first.next, Opcode::Store) && isAt(first.next + 2, Opcode::Pop)) {
        instruction.action = Action::Move;
        instruction.steps = 3;
        instruction.to = code_[first.next + 1];
        instruction.needed = static_cast<std::uint16_t>(std::max(neededFor(first.value), instruction.to + 1));
        goOn(instruction, first.next + 3);
        return instruction;
    }
    // Two at once, but where the second one belongs to what follows.
    const auto third = second ? operandAt(second->next) : std::nullopt;
    if (second && !(third && binaryAt(third->next)) && !isAt(second->next, Opcode::Component)) {
        instruction.action = Action::PushTwo;
        instruction.b = second->value;
        instruction.needed = static_cast<std::uint16_t>(std::max(neededFor(first.value), neededFor(second->value)));
        goOn(instruction, second->next);
        return instruction;
    }
    instruction.action = Action::Push;
    instruction.steps = 1;
    goOn(instruction, first.next);
    return instruction;
}

// An operation of two values, of which b or both come from operands, and what is done with its result.
Instruction DecodedCode::decodeBinary(Action::Kind family, std::size_t next, int operands, std::int16_t a,
                                      std::int16_t b) const {
    Instruction instruction;
    instruction.a = a;
    instruction.b = b;
    int needed = 2 - operands;
    if (operands >= 1) {
        needed = std::max(needed, neededFor(b));
    }
    if (operands == 2) {
        needed = std::max(needed, neededFor(a));
    }
    instruction.steps = static_cast<std::uint8_t>(1 + operands);
    int form = operands;
    if (family < Action::Equal) {
        form += takeStore(instruction, next, needed, 2 - operands) ? 3 : 0;
        instruction.action = formOf(family, form);
        return instruction;
    }
    instruction.needed = static_cast<std::uint16_t>(needed);
    const bool isNegated = isAt(next, Opcode::Not) && isAt(next + 1, Opcode::JumpUnless);
    const std::size_t jump = isNegated ? next + 1 : next;
    if (const auto target = isAt(jump, Opcode::JumpUnless) ? jumpTarget(jump) : std::nullopt) {
        form += 3;
        instruction.steps = static_cast<std::uint8_t>(instruction.steps + (isNegated ? 2 : 1));
        instruction.next = at(isNegated ? *target : jump + 3);
        instruction.target = at(isNegated ? jump + 3 : *target);
    } else {
        goOn(instruction, next);
    }
    instruction.action = formOf(family, form);
    return instruction;
}

Instruction DecodedCode::decodeOpcode(std::size_t position) const {
    if (const auto family = binaryAt(position)) {
        return decodeBinary(*family, position + 1, 0, 0, 0);
    }
    if (position >= code_.size()) {
        return leave();
    }
    Instruction instruction;
    instruction.steps = 1;
    if (code_[position] > kLastOpcode) {
        instruction.action = Action::Jump;
        instruction.next = at(position + 1);
        return instruction;
    }
    const auto plain = [&](Action::Kind action, int needed) {
        instruction.action = action;
        instruction.needed = static_cast<std::uint16_t>(needed);
        goOn(instruction, position + 1);
        return instruction;
    };
    const bool hasByte = position + 1 < code_.size();
    const auto withByte = [&](Action::Kind action, int needed) {
        instruction.action = action;
        instruction.needed = static_cast<std::uint16_t>(needed);
        instruction.a = code_[position + 1];
        goOn(instruction, position + 2);
        return instruction;
    };
    const auto target = jumpTarget(position);
    switch (static_cast<Opcode>(code_[position])) {
    case Opcode::Vector:
        return plain(Action::Vector, 3);
    case Opcode::Modulo:
        return plain(Action::Modulo, 2);
    case Opcode::Negate:
        return plain(Action::Negate, 1);
    case Opcode::Not:
        return plain(Action::Not, 1);
    case Opcode::And:
        return plain(Action::And, 2);
    case Opcode::Or:
        return plain(Action::Or, 2);
    case Opcode::Pop:
        return plain(Action::Pop, 1);
    case Opcode::Return:
        instruction.action = Action::Return;
        return instruction;
    case Opcode::Component:
        return hasByte ? withByte(Action::Component, 1) : leave();
    case Opcode::Output:
        return hasByte ? withByte(Action::Output, 1) : leave();
    case Opcode::GetOutput:
        return hasByte ? withByte(Action::GetOutput, 0) : leave();
    case Opcode::Store: {
        if (!hasByte) {
            return leave();
        }
        const bool isPopped = isAt(position + 2, Opcode::Pop);
        withByte(isPopped ? Action::StorePop : Action::Store, code_[position + 1] + 1);
        if (isPopped) {
            instruction.steps = 2;
            goOn(instruction, position + 3);
        }
        return instruction;
    }
    case Opcode::Jump:
    case Opcode::JumpBack:
        if (!target) {
            return leave();
        }
        instruction.action = Action::Jump;
        instruction.next = at(*target);
        return instruction;
    case Opcode::JumpUnless:
        if (!target) {
            return leave();
        }
        instruction.action = Action::JumpUnless;
        instruction.needed = 1;
        instruction.next = at(position + 3);
        instruction.target = at(*target);
        return instruction;
    case Opcode::Call:
        return decodeCall(position);
    default:
        return leave();
    }
}

Instruction DecodedCode::decodeCall(std::size_t position) const {
    if (position + 3 >= code_.size()) {
        return leave();
    }
    Instruction instruction;
    instruction.steps = 1;
    instruction.a = code_[position + 1];
    instruction.needed = code_[position + 1];
    const unsigned target = static_cast<unsigned>(code_[position + 2]) << 8U | code_[position + 3];
    if (target < code_.size()) {
        instruction.action = Action::Call;
        instruction.next = at(position + 4);
        instruction.target = at(target);
        return instruction;
    }
    const auto id = static_cast<unsigned short>(target);
    if (Builtin::name(id) == nullptr || Builtin::arity(id) > code_[position + 1]) {
        return leave();
    }
    instruction.action = Action::Native;
    instruction.native = Builtin::native(id);
    goOn(instruction, position + 4);
    return instruction;
}

} // namespace zent
