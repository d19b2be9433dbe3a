#pragma once

#include "zent/expression/Value.h"

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
///             const 2.5        # a literal joins the pool, once: true, 7, 2.5, (1, 0, 0); [3] is constant 3 as it
///             stands call 2 atan2     # the number of arguments; a label, the name or number of a built-in, or a
///             position output 0 jump done        # to a label or a position; also unless (if false) and back byte 200
///             # a byte as it stands
///     done:   end
///
/// Throws std::runtime_error, "line LINE: ..." and what is wrong there.
Program assemble(const std::string& source);

/// The text of byte code, one instruction a line, each with its position as its label. It assembles to the same bytes.
/// Constants are shown in comments where they are known.
std::string disassemble(const std::vector<unsigned char>& code, const std::vector<Value>* constants = nullptr);

} // namespace zent
