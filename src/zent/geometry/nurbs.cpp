#include "zent/geometry/nurbs.h"

#include "zent/math/require.h"

#include <string>

namespace zent {
namespace {

// The texts of the checks are only made where one fails: evaluation is behind a check at each door.

void requireDirection(const char* name, const char* direction, unsigned degree, const std::vector<float>& knots) {
    if (degree < 1 || degree > kMaxDegree) {
        fail(std::string(name) + direction + " has degree " + std::to_string(degree) + ", evaluation needs 1 to " +
             std::to_string(kMaxDegree));
    }
    if (knots.size() < std::size_t{2} * degree) {
        requireAtLeast((std::string(name) + direction + " knots").c_str(), knots.size(), std::size_t{2} * degree,
                       ("degree " + std::to_string(degree)).c_str());
    }
}

} // namespace

unsigned uniqueCount(const Curve& curve) {
    const auto count = static_cast<unsigned>(curve.cv.size());
    const unsigned overlap = curve.form == kFormPeriodic ? curve.degree : 0;
    return count < overlap ? 0 : count - overlap;
}

unsigned spanCount(const Curve& curve) {
    const unsigned count = uniqueCount(curve);
    return count < curve.degree ? 0 : count - curve.degree;
}

void requireEvaluable(const Curve& curve, const char* name) {
    requireDirection(name, "", curve.degree, curve.knots);
    const std::size_t needed = curve.knots.size() - curve.degree + 1;
    if (curve.cv.size() < needed) {
        requireAtLeast((std::string(name) + " control points").c_str(), curve.cv.size(), needed,
                       (std::to_string(curve.knots.size()) + " knots").c_str());
    }
}

void requireEvaluable(const Surface& surface, const char* name) {
    requireDirection(name, " in U", surface.degreeU, surface.knotsU);
    requireDirection(name, " in V", surface.degreeV, surface.knotsV);
    const std::size_t countU = surface.knotsU.size() - surface.degreeU + 1;
    const std::size_t countV = surface.knotsV.size() - surface.degreeV + 1;
    if (surface.cv.size() < countU * countV) {
        requireAtLeast((std::string(name) + " control points").c_str(), surface.cv.size(), countU * countV,
                       (std::to_string(countU) + " by " + std::to_string(countV) + " of the knots").c_str());
    }
}

void requireKnotPerPoint(const Curve& curve, const char* name) {
    const std::size_t count = uniqueCount(curve);
    if (curve.knots.size() < count) {
        requireAtLeast((std::string(name) + " knots").c_str(), curve.knots.size(), count,
                       (std::to_string(count) + " control points").c_str());
    }
}

} // namespace zent
