#pragma once

#include "zent/expression/Value.h"

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

    ValueStack() : values_(kUsualSize) {}

    std::size_t size() const { return size_; }

    // By alternative, as in `store`: a copy of the whole record would wait until the parts last written reach memory.
    void push(const Value& value) {
        std::visit([this](const auto& alternative) { push(alternative); }, value);
    }

    template <class T>
    void push(T alternative) {
        if (size_ == values_.size()) {
            grow();
        }
        values_[size_++].template emplace<T>(alternative);
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
        Value& to = this->slot(frame, slot);
        std::visit([&to](auto alternative) { to.emplace<decltype(alternative)>(alternative); }, top());
    }

    /// Removes the values down to an index; where there are none above it, none.
    void shrink(std::size_t size) { size_ = std::min(size_, size); }

    /// The values from an index up.
    Value* from(std::size_t index) { return values_.data() + index; }

private:
    static constexpr std::size_t kUsualSize = 32;

    void grow();
    [[noreturn]] void failEmpty(std::size_t needed) const;
    [[noreturn]] void failSlot(std::size_t frame, std::size_t slot) const;

    std::vector<Value> values_;
    std::size_t size_ = 0;
};

} // namespace zent
