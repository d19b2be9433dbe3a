#pragma once

namespace zent {

/// The instructions of the expression machine; a number is the opcode byte. Operands are unsigned and follow it, 16-bit
/// ones with the high byte first. Of two values taken from the stack, b is the top and a lies below it.
enum class Opcode : unsigned char {
    Constant = 0,    ///< index: push a constant
    Vector = 1,      ///< x y z -> the vector of the three as numbers
    Component = 2,   ///< component: vector -> double; an operand other than 1 and 2 means component 0
    Add = 3,         ///< a b -> a + b, of integers and doubles only, as the next three
    Subtract = 4,    ///< a b -> a - b
    Multiply = 5,    ///< a b -> a * b
    Divide = 6,      ///< a b -> a / b, truncated for two integers
    Modulo = 7,      ///< a b -> remainder with the sign of a, for any alternatives
    Negate = 8,      ///< integer or double
    Not = 9,         ///< bool
    Equal = 10,      ///< a b -> bool, of integers and doubles only, as the next two
    Greater = 11,    ///< a b -> a > b
    Less = 12,       ///< a b -> a < b
    And = 13,        ///< two bools, both taken
    Or = 14,         ///< two bools, both taken
    True = 15,       ///< push true
    False = 16,      ///< push false
    Pop = 17,        ///< discard the top
    Load = 18,       ///< slot: push a slot of the present frame
    Store = 19,      ///< slot: the slot takes the top, which stays
    Output = 20,     ///< slot: value -> the output, as a number
    Input = 21,      ///< slot: push an input as double
    GetOutput = 22,  ///< slot: push an output as double
    Call = 23,       ///< count, target in 16 bits: call with the top `count` values as arguments
    Return = 24,     ///< result -> the caller's stack, in place of the arguments
    Jump = 25,       ///< offset in 16 bits: forward, from behind the operand
    JumpUnless = 26, ///< offset in 16 bits: bool -> forward if false
    JumpBack = 27,   ///< offset in 16 bits: back, from behind the operand
    End = 28,        ///< return the outputs
};

/// Opcodes above this one are skipped, as no-operations of one byte.
inline constexpr unsigned char kLastOpcode = static_cast<unsigned char>(Opcode::End);

} // namespace zent
