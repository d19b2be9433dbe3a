#pragma once

#include "zent/expression/arithmetic.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zent {

/// The value stack of the expression machine. Every access is checked, and throws std::runtime_error with a text that
/// names what is missing; nothing is allocated but to grow.
class ValueStack {
public:
    /// The most values that a program may keep.
    static constexpr std::size_t kLimit = std::size_t{1} << 20;

    ValueStack() : values_(reinterpret_cast<Value*>(&room_)) {}
    ValueStack(const ValueStack&) = delete;
    ValueStack& operator=(const ValueStack&) = delete;

    std::size_t size() const { return size_; }

    void push(const Value& value) {
        std::visit([this](auto alternative) { push(alternative); }, value);
    }

    template <class T>
    void push(T alternative) {
        if (size_ == capacity_) {
            grow();
        }
        assign(values_[size_++], alternative);
    }

    /// The value that lies `depth` below the top.
    Value& top(std::size_t depth = 0) {
        if (depth >= size_) {
            failEmpty(depth + 1);
        }
        return values_[size_ - 1 - depth];
    }

    void pop() {
        top();
        --size_;
    }

    template <class T>
    T popAs() {
        const T alternative = as<T>(top());
        --size_;
        return alternative;
    }

    double popNumber() {
        const double number = toNumber(top());
        --size_;
        return number;
    }

    /// A slot of the frame that starts at index `frame`.
    Value& slot(std::size_t frame, std::size_t slot) {
        if (frame + slot >= size_) {
            failSlot(frame, slot);
        }
        return values_[frame + slot];
    }

    /// The slot takes the top, which stays.
    void store(std::size_t frame, std::size_t slot) {
        Value& to = this->slot(frame, slot); // the slot is missed first
        assign(to, top());
    }

    /// Removes the values down to an index; where there are none above it, none.
    void shrink(std::size_t size) { size_ = std::min(size_, size); }

    /// The values from an index up; there is room for `capacity` from 0.
    Value* from(std::size_t index) { return values_ + index; }
    std::size_t capacity() const { return capacity_; }
    /// What was written behind the size becomes part of the stack, or what lies behind it no longer is.
    void resize(std::size_t size) { size_ = size; }

private:
    static constexpr std::size_t kUsualSize = 32;

    void grow();
    [[noreturn]] void failEmpty(std::size_t needed) const;
    [[noreturn]] void failSlot(std::size_t frame, std::size_t slot) const;

    // Room that nothing is written to before a value is, since most programs need little of it and run once.
    std::aligned_storage_t<kUsualSize * sizeof(Value), alignof(Value)> room_;
    std::vector<Value> grown_;
    Value* values_;
    std::size_t capacity_ = kUsualSize;
    std::size_t size_ = 0;
};

} // namespace zent
