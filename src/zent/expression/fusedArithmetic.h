#pragma once

#include "zent/expression/DecodedCode.h"

namespace zent {

/// How two or three operations hang together: `outer` takes the result of `inner`, and in a product of sums, say, that
/// of `other`. Operands are a to d, in the order of the byte code.
enum class Fusion {
    AfterTop,  ///< top outer (a inner b)
    OnTop,     ///< (top inner a) outer b
    WithThird, ///< (a inner b) outer c
    OfPairs,   ///< (a inner b) outer (c other d)
};

/// The machine of the arithmetic operations of these families: Add, Subtract, Multiply, Divide. `other` counts for
/// `OfPairs` alone.
FusedArithmetic fusedArithmetic(Fusion fusion, Action::Kind outer, Action::Kind inner, Action::Kind other);

} // namespace zent
