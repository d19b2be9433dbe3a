#include "zent/nodes/plusMinusAverage.h"

#include "zent/math/require.h"

#include <numeric>

namespace zent {
namespace {

template <class T>
T plusMinusAverage(svec<T, 8> const& in, int op, const char* what) {
    const T zero(0.0f);
    switch (op) {
    case 0:
        requireAtLeast("in", in.size(), 1, what);
        return in[0];
    case 1:
        return std::accumulate(in.begin(), in.end(), zero);
    case 2:
        requireAtLeast("in", in.size(), 1, what);
        return in[0] - std::accumulate(in.begin() + 1, in.end(), zero);
    case 3:
        return std::accumulate(in.begin(), in.end(), zero) / static_cast<float>(in.size());
    default:
        return zero;
    }
}

} // namespace

float plusMinusAverage1D(svec<float, 8> in, int op) {
    return plusMinusAverage(in, op, "plusMinusAverage1D");
}

vec2 plusMinusAverage2D(svec<vec2, 8> in, int op) {
    return plusMinusAverage(in, op, "plusMinusAverage2D");
}

vec3 plusMinusAverage3D(svec<vec3, 8> in, int op) {
    return plusMinusAverage(in, op, "plusMinusAverage3D");
}

} // namespace zent
