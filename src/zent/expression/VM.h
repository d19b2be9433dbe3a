#pragma once

#include "zent/expression/Value.h"
#include "zent/expression/ValueStack.h"
#include "zent/math/types.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace zent {

class DecodedCode;

/// The stack machine that runs the byte code of one expression; Opcode.h lists its instructions. A machine runs once,
/// or from the start again.
///
/// What a program does wrong throws: std::out_of_range where it runs past its end, UnexpectedIndex where an instruction
/// or a built-in gets a value of the wrong alternative, std::runtime_error with "Unreachable" for arithmetic on bools
/// or vectors, and std::runtime_error with a text of its own for all that would reach outside a list, divide integers
/// by zero or recurse without end. A loop without end is the program's own.
///
/// It begins with the bytes as they stand. Code that jumps back or calls itself often enough is decoded on the way, and
/// goes on in instructions of a fixed size, of which one may do the work of several. Those only know what is usual: at
/// all else, the end and every error included, the machine returns to the bytes.
class VM {
public:
    using Floats = svec<float, 16>;

    /// The most calls that a program may keep open.
    static constexpr std::size_t kMaxCalls = std::size_t{1} << 18;

    /// So many jumps back and calls run from the bytes, before the code is decoded; `kNever` decodes none.
    static constexpr unsigned kWarmUp = 16;
    static constexpr unsigned kNever = 0;

    VM(std::vector<unsigned char>&& code, std::vector<Value>&& constants, unsigned warmUp = kWarmUp);
    ~VM();
    VM(const VM&) = delete;
    VM& operator=(const VM&) = delete;

    /// Runs to the end instruction. Returns the outputs, up to the highest slot that was written; those in between are
    /// 0.
    Floats execute(Floats inputs);
    /// The same from the start, in the room of the runs before it.
    Floats executeAgain(const Floats& inputs);
    /// The same for code that may never end: throws std::runtime_error when it has run so many instructions.
    Floats executeAtMost(std::uint64_t instructions, Floats inputs);

private:
    template <class Meter>
    Floats run(const Floats& inputs, Meter meter);
    template <class Meter>
    int runDecoded(int ip, const Floats& inputs, Floats& outputs, Meter& meter);
    bool isWarm();

    void openCall(int ip, unsigned frame);

    std::vector<unsigned char> code_;
    std::vector<Value> constants_;
    int ip_ = 0;
    ValueStack stack_;
    unsigned frame_ = 0; ///< where the present function's first argument lies on the stack
    /// For each open call, where to go on and the caller's frame. A vector, since a deque would allocate and free a
    /// block at each call across a block's border.
    std::vector<std::pair<int, unsigned>> calls_;
    unsigned warmUp_;
    unsigned repeats_ = 0; ///< jumps back and calls from the bytes
    std::unique_ptr<DecodedCode> decoded_;
};

} // namespace zent
