#pragma once

#include "zent/expression/Builtin.h"
#include "zent/expression/Opcode.h"
#include "zent/expression/Value.h"
#include "zent/math/types.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zent {

/// What a decoded instruction does. One of a family, as Add, is followed by its forms: both values from the stack; b
/// from an operand; both from operands; and the same three with the result in a local.
struct Action {
    enum Kind : std::uint8_t {
        Undecoded,
        Leave, ///< to the bytes: the end, and all that goes wrong
        Push,
        PushTwo,
        Move, ///< a local takes the operand
        Pop,
        Store,
        StorePop,
        Vector,
        Component,
        ComponentOf, ///< of the operand
        Modulo,
        Negate,
        Not,
        And,
        Or,
        Output,
        OutputOf, ///< of the operand
        GetOutput,
        Call,
        Native,
        Return,
        Jump,
        JumpUnless,
        Add,
        Subtract = Add + 6,
        Multiply = Subtract + 6,
        Divide = Multiply + 6,
        Equal = Divide + 6, ///< of comparisons, the last three forms jump unless it holds
        Greater = Equal + 6,
        Less = Greater + 6,
        Fused = Less + 6, ///< several of arithmetic at once
    };
};

struct Instruction;

/// Runs several operations of arithmetic. Returns the new top of the stack; null, with nothing done, where their values
/// are not numbers with a double in each pair.
using FusedArithmetic = Value* (*)(Value* top, Value* frame, const Value* pool, const Instruction& now);

/// One or more instructions of the byte code, with operands read and jumps resolved.
struct Instruction {
    Action::Kind action = Action::Undecoded;
    std::uint8_t steps = 0;   ///< how many instructions of the byte code it stands for
    std::uint16_t needed = 0; ///< how many values must lie above the frame's start
    std::int16_t a = 0;       ///< an operand: a local's slot, or the complement of an index in the pool; or a number
    std::int16_t b = 0;
    std::int16_t c = 0;
    std::int16_t d = 0;
    std::int16_t to = 0; ///< the slot of the local that takes the result; of fused arithmetic, -1 for the stack
    const Instruction* next = nullptr;
    union {
        const Instruction* target = nullptr; ///< of a jump that is taken, or a call
        Builtin::Native native;
        FusedArithmetic fused;
    };
};

/// The value of an operand: of a local of the frame, or of the pool.
inline const Value& valueOf(std::int16_t operand, const Value* frame, const Value* pool) {
    return operand >= 0 ? frame[operand] : pool[-1 - operand];
}

/// The byte code of one machine as instructions of a fixed size, one for each position at which an instruction may
/// begin, so that a jump may lead anywhere. Each is decoded when it is first run.
class DecodedCode {
public:
    /// The longest code that is decoded; calls reach no farther.
    static constexpr std::size_t kMaxSize = 0xFFFF;

    DecodedCode(const std::vector<unsigned char>& code, const std::vector<Value>& constants,
                const svec<float, 16>& inputs);

    const Instruction* at(std::size_t position) const { return instructions_.data() + position; }
    std::size_t positionOf(const Instruction* instruction) const {
        return static_cast<std::size_t>(instruction - instructions_.data());
    }
    void decode(std::size_t position);
    /// The same once more, without fused arithmetic, whose values were of other kinds.
    void decodeApart(std::size_t position);
    /// The inputs of another run; false where there is another number of them.
    bool takeInputs(const svec<float, 16>& inputs);

    /// The constants, the inputs as doubles, true and false.
    const Value* pool() const { return pool_.data(); }

private:
    // An instruction that only pushes a value, as the operand of another one.
    struct Operand {
        std::int16_t value = 0;
        std::size_t next = 0;
    };

    std::optional<Operand> operandAt(std::size_t position) const;
    std::optional<Action::Kind> binaryAt(std::size_t position) const;
    bool isAt(std::size_t position, Opcode opcode) const;
    std::optional<std::size_t> jumpTarget(std::size_t position) const;

    Instruction decodeOperand(const Operand& first) const;
    std::optional<Instruction> decodeFused(std::size_t position) const;
    Instruction decodeBinary(Action::Kind family, std::size_t next, int operands, std::int16_t a, std::int16_t b) const;
    Instruction decodeOpcode(std::size_t position) const;
    Instruction decodeCall(std::size_t position) const;
    bool takeStore(Instruction& instruction, std::size_t next, int needed, int taken) const;
    void goOn(Instruction& instruction, std::size_t next) const;

    const std::vector<unsigned char>& code_;
    std::size_t constants_;
    std::size_t inputs_;
    std::vector<Value> pool_;
    std::vector<Instruction> instructions_;
};

} // namespace zent
