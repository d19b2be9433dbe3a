#include "zent/expression/fusedArithmetic.h"

#include "zent/expression/arithmetic.h"

#include <tuple>
#include <utility>

namespace zent {

namespace {

using Operations = std::tuple<Add, Subtract, Multiply, Divide>; // in the order of their families
constexpr std::size_t kCount = std::tuple_size_v<Operations>;

// A result between two operations, of which no value is made. It is that of doubles: two integers have an integer for a
// result, which is left to the single operations.
template <class Operation>
[[gnu::always_inline]] inline bool takeDouble(double& result, const Value& a, const Value& b, Operation operation) {
    const double* x = std::get_if<double>(&a);
    const double* y = std::get_if<double>(&b);
    if (x != nullptr && y != nullptr) {
        result = operation(*x, *y);
        return true;
    }
    const int* m = std::get_if<int>(&a);
    const int* n = std::get_if<int>(&b);
    if (x != nullptr && n != nullptr) {
        result = operation(*x, static_cast<double>(*n));
        return true;
    }
    if (m != nullptr && y != nullptr) {
        result = operation(static_cast<double>(*m), *y);
        return true;
    }
    return false;
}

[[gnu::always_inline]] inline bool widen(double& number, const Value& value) {
    if (const double* alternative = std::get_if<double>(&value)) {
        number = *alternative;
        return true;
    }
    if (const int* integer = std::get_if<int>(&value)) {
        number = *integer;
        return true;
    }
    return false;
}

template <Fusion kFusion, std::size_t kOuter, std::size_t kInner, std::size_t kOther>
Value* run(Value* top, Value* frame, const Value* pool, const Instruction& now) {
    const std::tuple_element_t<kOuter, Operations> outer;
    const std::tuple_element_t<kInner, Operations> inner;
    const std::tuple_element_t<kOther, Operations> other;
    const Value& a = valueOf(now.a, frame, pool);
    const Value& b = valueOf(now.b, frame, pool);
    constexpr int kTaken = kFusion == Fusion::AfterTop || kFusion == Fusion::OnTop ? 1 : 0;
    double first = 0.0;
    double second = 0.0;
    bool areNumbers = false;
    switch (kFusion) {
    case Fusion::AfterTop:
        areNumbers = widen(first, top[-1]) && takeDouble(second, a, b, inner);
        break;
    case Fusion::OnTop:
        areNumbers = takeDouble(first, top[-1], a, inner) && widen(second, b);
        break;
    case Fusion::WithThird:
        areNumbers = takeDouble(first, a, b, inner) && widen(second, valueOf(now.c, frame, pool));
        break;
    case Fusion::OfPairs:
        areNumbers = takeDouble(first, a, b, inner) &&
                     takeDouble(second, valueOf(now.c, frame, pool), valueOf(now.d, frame, pool), other);
        break;
    }
    if (!areNumbers) {
        return nullptr;
    }
    top -= kTaken;
    if (now.to >= 0) {
        assign(frame[now.to], outer(first, second));
        return top;
    }
    assign(*top, outer(first, second));
    return top + 1;
}

// By outer, inner and, where there are several, other.
template <Fusion kFusion, std::size_t kOthers, std::size_t... kIndex>
FusedArithmetic runnerOf(std::size_t index, std::index_sequence<kIndex...> /*indices*/) {
    static constexpr FusedArithmetic kRunners[] = {
        run<kFusion, kIndex / (kCount * kOthers), kIndex / kOthers % kCount, kIndex % kOthers>...};
    return kRunners[index];
}

std::size_t indexOf(Action::Kind family) {
    return static_cast<std::size_t>(family - Action::Add) / (Action::Subtract - Action::Add);
}

} // namespace

FusedArithmetic fusedArithmetic(Fusion fusion, Action::Kind outer, Action::Kind inner, Action::Kind other) {
    const std::size_t pair = indexOf(outer) * kCount + indexOf(inner);
    const auto pairs = std::make_index_sequence<kCount * kCount>();
    switch (fusion) {
    case Fusion::AfterTop:
        return runnerOf<Fusion::AfterTop, 1>(pair, pairs);
    case Fusion::OnTop:
        return runnerOf<Fusion::OnTop, 1>(pair, pairs);
    case Fusion::WithThird:
        return runnerOf<Fusion::WithThird, 1>(pair, pairs);
    default:
        return runnerOf<Fusion::OfPairs, kCount>(pair * kCount + indexOf(other),
                                                 std::make_index_sequence<kCount * kCount * kCount>());
    }
}

} // namespace zent
