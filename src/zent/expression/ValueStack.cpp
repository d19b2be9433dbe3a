#include "zent/expression/ValueStack.h"

#include "zent/math/require.h"

namespace zent {

void ValueStack::failEmpty(std::size_t needed) const {
    fail("an instruction of the expression takes " + std::to_string(needed) + " values from a stack of " +
         std::to_string(values_.size()));
}

void ValueStack::failSlot(std::size_t frame, std::size_t slot) const {
    fail("local slot " + std::to_string(slot) + " of the expression lies beyond the stack: the frame starts at " +
         std::to_string(frame) + ", the stack has " + std::to_string(values_.size()));
}

void ValueStack::failFull() {
    fail("the expression keeps more than " + std::to_string(kLimit) + " values on its stack");
}

} // namespace zent
