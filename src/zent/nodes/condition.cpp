#include "zent/nodes/condition.h"

namespace zent {
namespace {

bool conditionHolds(float first, float second, int op) {
    switch (op) {
    // Deliberate: a difference of exactly the threshold is neither equal nor not equal.
    case 0:
        return std::abs(first - second) < kThreshold;
    case 1:
        return std::abs(first - second) > kThreshold;
    case 2:
        return first > second;
    case 3:
        return first >= second;
    // Deliberately the negations of the two before: NaN is less, and less or equal.
    case 4:
        return !(first >= second);
    case 5:
        return !(first > second);
    default:
        return false;
    }
}

} // namespace

float condition1D(float first, float second, float ifTrue, float ifFalse, int op) {
    return conditionHolds(first, second, op) ? ifTrue : ifFalse;
}

vec3 condition3D(float first, float second, vec3 ifTrue, vec3 ifFalse, int op) {
    return conditionHolds(first, second, op) ? ifTrue : ifFalse;
}

} // namespace zent
