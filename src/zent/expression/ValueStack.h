#pragma once

#include "zent/expression/arithmetic.h"

#include <cstddef>
#include <vector>

namespace zent {

/// The value stack of the expression machine. What is wrong with an access throws std::runtime_error with a text that
/// names what is missing; nothing is allocated but to grow.
class ValueStack {
public:
    /// The most values that a program may keep.
    static constexpr std::size_t kLimit = std::size_t{1} << 20;

    /// Where the values lie.
    struct Room {
        Value* bottom;
        Value* top; ///< behind the topmost value
        Value* end;
    };

    ValueStack() : values_(reinterpret_cast<Value*>(&room_)) {}
    ValueStack(const ValueStack&) = delete;
    ValueStack& operator=(const ValueStack&) = delete;

    std::size_t size() const { return size_; }
    Room room() { return {values_, values_ + size_, values_ + capacity_}; }
    /// What was written behind the size becomes part of the stack, or what lies behind it no longer is.
    void resize(std::size_t size) { size_ = size; }
    /// Makes more room for a stack that fills its own.
    Room grow();

    [[noreturn]] static void failEmpty(std::size_t needed, std::size_t size);
    [[noreturn]] static void failSlot(std::size_t frame, std::size_t slot, std::size_t size);

private:
    static constexpr std::size_t kUsualSize = 32;

    // Room that nothing is written to before a value is, since most programs need little of it and run once.
    std::aligned_storage_t<kUsualSize * sizeof(Value), alignof(Value)> room_;
    std::vector<Value> grown_;
    Value* values_;
    std::size_t capacity_ = kUsualSize;
    std::size_t size_ = 0;
};

} // namespace zent
