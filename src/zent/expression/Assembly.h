#pragma once

#include "zent/expression/Value.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zent {

/// What the expression machine runs.
struct Program {
    std::vector<unsigned char> code;
    std::vector<Value> constants;
};

/// Byte code from text, one instruction a line, with the mnemonics of `disassemble`:
///
///     again:  input 0          # a label; a comment
///             const 2.5        # a literal joins the pool, once: true, 7, 2.5, (1, 0, 0); [3] is constant 3
///             call 2 atan2     # how many arguments; a label, a position, or a built-in's name or number
///             output 0
///             jump done        # to a label or a position; also unless (if false) and back
///             byte 200         # a byte as it stands
///     done:   end
///
/// Throws std::runtime_error, "line LINE: ..." and what is wrong there.
Program assemble(const std::string& source);

/// The text of byte code, one instruction a line, each with its position as its label. It assembles to the same bytes.
/// Constants are shown in comments where they are known.
std::string disassemble(const std::vector<unsigned char>& code, const std::vector<Value>* constants = nullptr);

/// A position in the code at which the instructions of a line of its source begin; lines count from 1.
struct SourceMark {
    std::size_t position;
    int line;
};

/// The text of a compiled program, each line of its source as a comment above its instructions. It assembles to the
/// same program, constants included.
std::string listing(const Program& program, const std::vector<SourceMark>& marks, const std::string& source);

/// How many bytes an instruction takes with its operands.
std::size_t instructionSize(unsigned char opcode);

} // namespace zent
