#include "zent/expression/ValueStack.h"

#include "zent/math/require.h"

#include <algorithm>
#include <string>
#include <utility>

namespace zent {

ValueStack::Room ValueStack::grow() {
    size_ = capacity_;
    if (size_ >= kLimit) {
        fail("the expression keeps more than " + std::to_string(kLimit) + " values on its stack");
    }
    std::vector<Value> wider(2 * capacity_);
    std::copy(values_, values_ + size_, wider.begin());
    grown_ = std::move(wider);
    values_ = grown_.data();
    capacity_ = grown_.size();
    return room();
}

void ValueStack::failEmpty(std::size_t needed, std::size_t size) {
    fail("an instruction of the expression takes " + std::to_string(needed) + " values from a stack of " +
         std::to_string(size));
}

void ValueStack::failSlot(std::size_t frame, std::size_t slot, std::size_t size) {
    fail("local slot " + std::to_string(slot) + " of the expression lies beyond the stack: the frame starts at " +
         std::to_string(frame) + ", the stack has " + std::to_string(size));
}

} // namespace zent
