#include "zent/geometry/shapes.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/transform.h"
#include "zent/math/require.h"

#include <cstdint>
#include <string>

namespace zent {
namespace {

/// Control points that the knots of one direction speak for.
std::size_t requireDirectionCount(const std::string& name, unsigned degree, unsigned form,
                                  const std::vector<float>& knots) {
    requireAtLeast((name + " knots").c_str(), knots.size(), degree == 0 ? 0 : degree - 1,
                   ("degree " + std::to_string(degree)).c_str());
    const std::size_t count = knots.size() + 1 - degree;
    if (form == kFormPeriodic && count != 0) {
        requireAtLeast((name + " control points").c_str(), count, degree, "a periodic overlap");
    }
    return count;
}

} // namespace

unsigned pointCount(const Mesh& shape) {
    return static_cast<unsigned>(shape.points.size());
}

unsigned pointCount(const Curve& shape) {
    return uniqueCount(shape);
}

unsigned pointCount(const Surface& shape) {
    return shape.cvCountU() * shape.cvCountV();
}

unsigned pointCount(const Lattice& shape) {
    return static_cast<unsigned>(shape.points.size());
}

PointWriter<Surface>::PointWriter(Surface& shape)
    : samples_(shape.closestSamples), points_(shape.cv.data()), countV_(shape.cvCountV()) {
    if (shape.formU == kFormPeriodic) {
        repeatedU_ = shape.degreeU * countV_;
        offsetU_ = (shape.cvCountU() - shape.degreeU) * countV_;
    }
    if (shape.formV == kFormPeriodic) {
        degreeV_ = shape.degreeV;
        offsetV_ = countV_ - shape.degreeV;
    }
}

void writePoint(Surface& shape, unsigned i, vec3 point) {
    PointWriter<Surface> write(shape);
    write(i, point);
}

std::size_t indexBound(const Surface& shape) {
    return repeatsPoints(shape) ? pointCount(shape) : shape.cv.size();
}

std::vector<char> selectionMask(const std::vector<unsigned int>& indices, std::size_t count) {
    std::vector<char> mask(count, 0);
    for (const unsigned int index : indices) {
        if (index < count) {
            mask[index] = 1;
        }
    }
    return mask;
}

template <>
Mesh onePointShape<Mesh>(vec3 point, const mat4& matrix) {
    return Mesh(std::vector<vec3>{point}, matrix);
}

template <>
Curve onePointShape<Curve>(vec3 point, const mat4& matrix) {
    return Curve(point, matrix);
}

template <>
Surface onePointShape<Surface>(vec3 point, const mat4& matrix) {
    return Surface(point, matrix);
}

template <>
Lattice onePointShape<Lattice>(vec3 point, const mat4& matrix) {
    Lattice lattice;
    lattice.s = lattice.t = lattice.u = 1;
    lattice.points = {point};
    setTransform(lattice, matrix);
    return lattice;
}

void requireConsistent(const Mesh&, const char*) {}

// A periodic curve of fewer points than its overlap has no point to visit, and a write repeats nothing.
void requireConsistent(const Curve&, const char*) {}

void requireConsistent(const Surface& shape, const char* name) {
    const std::size_t countU =
        requireDirectionCount(std::string(name) + " in U", shape.degreeU, shape.formU, shape.knotsU);
    const std::size_t countV =
        requireDirectionCount(std::string(name) + " in V", shape.degreeV, shape.formV, shape.knotsV);
    requireAtLeast((std::string(name) + " control points").c_str(), shape.cv.size(), countU * countV,
                   (std::to_string(countU) + " by " + std::to_string(countV) + " of the knots").c_str());
}

void requireConsistent(const Lattice&, const char*) {}

void requireAddressable(const Lattice& shape, const char* name) {
    const std::uint64_t layer = std::uint64_t{shape.s} * shape.t;
    // A product beyond 64 bits is no number of points either.
    const bool overflows = shape.u != 0 && layer > UINT64_MAX / shape.u;
    if (overflows || layer * shape.u > shape.points.size()) {
        fail(std::string(name) + " has " + std::to_string(shape.points.size()) + " points, its counts are " +
             std::to_string(shape.s) + " by " + std::to_string(shape.t) + " by " + std::to_string(shape.u));
    }
}

} // namespace zent
