#pragma once

#include "zent/expression/Value.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zent {

/// The value stack of the expression machine. Every access is checked, and throws std::runtime_error with a text that
/// names what is missing; nothing is allocated but to grow.
class ValueStack {
public:
    /// The most values that a program may keep.
    static constexpr std::size_t kLimit = std::size_t{1} << 20;

    ValueStack() { values_.reserve(kUsualSize); }

    std::size_t size() const { return values_.size(); }

    template <class T>
    void push(const T& value) {
        if (values_.size() >= kLimit) {
            failFull();
        }
        values_.emplace_back(value);
    }

    /// The value that lies `depth` below the top.
    Value& top(std::size_t depth = 0) {
        if (depth >= values_.size()) {
            failEmpty(depth + 1);
        }
        return *(values_.end() - static_cast<std::ptrdiff_t>(depth + 1));
    }

    void pop() {
        top();
        values_.pop_back();
    }

    template <class T>
    T popAs() {
        const T alternative = as<T>(top());
        values_.pop_back();
        return alternative;
    }

    double popNumber() {
        const double number = toNumber(top());
        values_.pop_back();
        return number;
    }

    /// Slot `slot` of the frame that starts at index `frame`.
    Value& slot(std::size_t frame, std::size_t slot) {
        if (frame + slot >= values_.size()) {
            failSlot(frame, slot);
        }
        return values_[frame + slot];
    }

    /// Removes the values down to an index; where there are none above it, none.
    void shrink(std::size_t size) {
        if (size < values_.size()) {
            values_.erase(values_.begin() + static_cast<std::ptrdiff_t>(size), values_.end());
        }
    }

    /// The values from an index up, as many as a built-in asks for; they must be there.
    Value* from(std::size_t index) { return values_.data() + index; }

private:
    static constexpr std::size_t kUsualSize = 64;

    [[noreturn]] void failEmpty(std::size_t needed) const;
    [[noreturn]] void failSlot(std::size_t frame, std::size_t slot) const;
    [[noreturn]] static void failFull();

    std::vector<Value> values_;
};

} // namespace zent
