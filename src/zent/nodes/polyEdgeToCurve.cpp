#include "zent/nodes/polyEdgeToCurve.h"

#include "zent/geometry/nurbs.h"
#include "zent/geometry/shapes.h"
#include "zent/math/require.h"

#include <Eigen/SparseCore>
#include <Eigen/SparseLU>

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace zent {
namespace {

/// The linear system whose unknowns are a curve's control points and whose rows say what a weighted sum of them is.
class InterpolationSystem {
public:
    InterpolationSystem(std::size_t size, unsigned degree)
        : degree_(degree), size_(static_cast<Eigen::Index>(size)), matrix_(size_, size_),
          targets_(Eigen::MatrixX3f::Zero(size_, 3)) {
        matrix_.reserve(Eigen::VectorXi::Constant(size_, static_cast<int>(degree) + 1));
    }

    /// Row `row`: the control points from `first` on, beyond the last one from the beginning again, weighted by one row
    /// of basis functions, give `target`. Weights near zero stay out of the matrix; two that meet in one column add up.
    void setRow(std::size_t row, std::size_t first, const BasisRow& weights, vec3 target) {
        const auto at = static_cast<Eigen::Index>(row);
        for (unsigned j = 0; j <= degree_; ++j) {
            if (!(std::abs(weights[j]) < kThreshold)) {
                matrix_.coeffRef(at, static_cast<Eigen::Index>(first + j) % size_) += weights[j];
            }
        }
        targets_.row(at) << target.x, target.y, target.z;
    }

    /// The control points; NaN where the factorisation meets a column of zeros.
    std::vector<vec3> solve() {
        std::vector<vec3> points(static_cast<std::size_t>(size_), vec3(std::numeric_limits<float>::quiet_NaN()));
        matrix_.makeCompressed();
        const Eigen::SparseLU<Eigen::SparseMatrix<float>, Eigen::COLAMDOrdering<int>> solver(matrix_);
        if (solver.info() == Eigen::Success) {
            // A coordinate at a time: the solve of a matrix of them rounds differently.
            for (int axis = 0; axis < 3; ++axis) {
                const Eigen::VectorXf solution = solver.solve(targets_.col(axis));
                for (Eigen::Index i = 0; i < size_; ++i) {
                    points[static_cast<std::size_t>(i)][axis] = solution(i);
                }
            }
        }
        return points;
    }

private:
    unsigned degree_;
    Eigen::Index size_;
    Eigen::SparseMatrix<float> matrix_;
    Eigen::MatrixX3f targets_;
};

std::vector<vec3> worldPoints(const Mesh& mesh, const std::vector<unsigned>& vertices) {
    requireAtLeast("vertices", vertices.size(), 1, "a curve");
    std::vector<vec3> points;
    points.reserve(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        requireIndex("vertices", i, vertices[i], mesh.points.size(), "the mesh");
        points.push_back(toWorld(mesh, mesh.points[vertices[i]]));
    }
    return points;
}

/// `count` knots, consecutive integers.
void appendIntegers(std::vector<float>& knots, int first, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        knots.push_back(static_cast<float>(i) + static_cast<float>(first));
    }
}

} // namespace

Curve polyEdgeToCurveLinear(const Mesh& mesh, std::vector<unsigned> vertices) {
    std::vector<vec3> points = worldPoints(mesh, vertices);
    std::vector<float> knots;
    appendIntegers(knots, 0, points.size());
    const unsigned form = vertices.front() == vertices.back() ? kFormPeriodic : kFormOpen;
    return Curve(1, form, std::move(points), std::move(knots), mat4(1.0f));
}

Curve polyEdgeToCurvePeriodic(const Mesh& mesh, std::vector<unsigned> vertices, unsigned degree) {
    if (degree < 1 || degree > kMaxDegree) {
        fail("degree is " + std::to_string(static_cast<int>(degree)) + ", a closed curve needs 1 to " +
             std::to_string(kMaxDegree));
    }
    requireAtLeast("vertices", vertices.size(), 3, "a closed curve, its first vertex repeated at the end,");
    vertices.pop_back();
    const std::vector<vec3> targets = worldPoints(mesh, vertices);
    const std::size_t count = targets.size();
    std::vector<float> knots;
    appendIntegers(knots, 1 - static_cast<int>(degree), count + std::size_t{2} * degree - 1);

    InterpolationSystem system(count, degree);
    for (std::size_t i = 0; i < count; ++i) {
        const auto u = static_cast<float>(i);
        system.setRow(i, i, basisFunctions(degree, findSpan(u, degree, knots), u, knots), targets[i]);
    }
    std::vector<vec3> points = system.solve();
    for (unsigned j = 0; j < degree; ++j) {
        points.push_back(vec3(points[j]));
    }
    return Curve(degree, kFormPeriodic, std::move(points), std::move(knots), mat4(1.0f));
}

Curve polyEdgeToCurveOpen(const Mesh& mesh, std::vector<unsigned> vertices, unsigned degree) {
    return curveFromEditPoints(degree, worldPoints(mesh, vertices));
}

Curve polyEdgeToCurve(const Mesh& mesh, std::vector<unsigned> vertices, unsigned degree) {
    requireAtLeast("vertices", vertices.size(), 1, "a curve");
    if (degree == 1) {
        return polyEdgeToCurveLinear(mesh, std::move(vertices));
    }
    if (vertices.front() == vertices.back()) {
        return polyEdgeToCurvePeriodic(mesh, std::move(vertices), degree);
    }
    return polyEdgeToCurveOpen(mesh, std::move(vertices), degree);
}

Curve curveFromMeshEdge(const Mesh& mesh, std::vector<unsigned> vertices) {
    return polyEdgeToCurve(mesh, std::move(vertices), 1);
}

Curve curveFromEditPoints(unsigned degree, std::vector<vec3> points) {
    if (degree != 3) {
        fail("degree is " + std::to_string(static_cast<int>(degree)) + ", an open curve through points needs 3");
    }
    requireAtLeast("points", points.size(), 2, "an open curve");
    const std::size_t count = points.size();
    std::vector<float> knots(degree - 1, 0.0f);
    appendIntegers(knots, 0, count);
    knots.insert(knots.end(), degree - 1, static_cast<float>(count - 1));

    const auto firstPoint = [&](unsigned span) { return span + 1 - degree; };
    InterpolationSystem system(count + degree - 1, degree);
    for (std::size_t i = 0; i < count; ++i) {
        const auto u = static_cast<float>(i);
        const unsigned span = findSpan(u, degree, knots);
        system.setRow(i, firstPoint(span), basisFunctions(degree, span, u, knots), points[i]);
    }
    const auto straightAt = [&](std::size_t row, float u) {
        const unsigned span = findSpan(u, degree, knots);
        system.setRow(row, firstPoint(span), computeDerivatives(2, degree, span, u, knots)[2], vec3(0.0f));
    };
    straightAt(count, 0.0f);
    straightAt(count + 1, knots.back());
    return Curve(degree, kFormOpen, system.solve(), std::move(knots), mat4(1.0f));
}

} // namespace zent
