#include "zent/nodes/surfaceKnotInsert.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/ParameterDirection.h"
#include "zent/geometry/shapes.h"
#include "zent/math/require.h"

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace zent {
namespace {

class KnotInsertion {
public:
    KnotInsertion(const ParameterDirection& direction, float knot, const char* argument)
        : degree_(direction.degree), knot_(knot) {
        const std::vector<float>& knots = direction.knots;
        if (knot < direction.start()) {
            fail(std::string(argument) + " is " + shown(knot) + ", the domain starts at " + shown(direction.start()));
        }
        span_ = direction.span(knot);
        for (unsigned j = 0; j < degree_; ++j) {
            const float below = knots[direction.first(span_) + j];
            alpha_[j] = (knot - below) / (knots[span_ + 1 + j] - below);
        }
    }

    std::vector<float> refinedKnots(const std::vector<float>& knots) const {
        std::vector<float> refined;
        refined.reserve(knots.size() + 1);
        const auto cut = knots.begin() + static_cast<std::ptrdiff_t>(span_) + 1;
        refined.assign(knots.begin(), cut);
        refined.push_back(knot_);
        refined.insert(refined.end(), cut, knots.end());
        return refined;
    }

    /// One line of `count` control points, `stride` apart in both lists, into a line of one more.
    void refineLine(const vec3* old, vec3* refined, std::size_t count, std::size_t stride) const {
        const std::size_t first = span_ + 1 - degree_; // of the degree + 1 points that the knot's span depends on
        for (std::size_t i = 0; i <= first; ++i) {
            refined[i * stride] = old[i * stride];
        }
        for (std::size_t j = 0; j < degree_; ++j) {
            const vec3* pair = old + (first + j) * stride;
            refined[(first + 1 + j) * stride] = (1.0f - alpha_[j]) * pair[0] + alpha_[j] * pair[stride];
        }
        for (std::size_t i = span_ + 1; i < count; ++i) {
            refined[(i + 1) * stride] = old[i * stride];
        }
    }

private:
    unsigned degree_;
    float knot_;
    unsigned span_ = 0;
    std::array<float, kMaxDegree> alpha_{};
};

} // namespace

Surface surfaceKnotInsertOnU(const Surface& surface, float knot) {
    requireEvaluable(surface, "surface");
    const ParameterDirection u = alongU(surface);
    const KnotInsertion insertion(u, knot, "knot in U");
    const std::size_t columns = surface.cvCountV();
    std::vector<vec3> points((u.count + 1) * columns, vec3(0.0f));
    for (std::size_t column = 0; column < columns; ++column) {
        insertion.refineLine(&surface.cv[column], &points[column], u.count, columns);
    }
    return Surface(surface.degreeU, surface.degreeV, surface.formU, surface.formV,
                   insertion.refinedKnots(surface.knotsU), surface.knotsV, std::move(points), matrixOf(surface));
}

Surface surfaceKnotInsertOnV(const Surface& surface, float knot) {
    requireEvaluable(surface, "surface");
    const ParameterDirection v = alongV(surface);
    const KnotInsertion insertion(v, knot, "knot in V");
    const std::size_t rows = surface.cvCountU();
    std::vector<vec3> points(rows * (v.count + 1), vec3(0.0f));
    for (std::size_t row = 0; row < rows; ++row) {
        insertion.refineLine(&surface.cv[row * v.count], &points[row * (v.count + 1)], v.count, 1);
    }
    return Surface(surface.degreeU, surface.degreeV, surface.formU, surface.formV, surface.knotsU,
                   insertion.refinedKnots(surface.knotsV), std::move(points), matrixOf(surface));
}

} // namespace zent
