#pragma once

#include "zent/geometry/Curve.h"
#include "zent/geometry/Lattice.h"
#include "zent/geometry/Mesh.h"
#include "zent/geometry/Surface.h"

/// What differs between the four shapes for someone who moves points: how many there are, where they stand, and what
/// else a write changes. Every deformer goes through these, and holds nothing but its own mathematics.
namespace zent {

inline std::vector<vec3>& pointsOf(Mesh& shape) {
    return shape.points;
}
inline std::vector<vec3>& pointsOf(Curve& shape) {
    return shape.cv;
}
inline std::vector<vec3>& pointsOf(Surface& shape) {
    return shape.cv;
}
inline std::vector<vec3>& pointsOf(Lattice& shape) {
    return shape.points;
}
inline const std::vector<vec3>& pointsOf(const Mesh& shape) {
    return shape.points;
}
inline const std::vector<vec3>& pointsOf(const Curve& shape) {
    return shape.cv;
}
inline const std::vector<vec3>& pointsOf(const Surface& shape) {
    return shape.cv;
}
inline const std::vector<vec3>& pointsOf(const Lattice& shape) {
    return shape.points;
}

/// The number of points a deformer visits. A periodic curve's overlap is left out; a periodic surface's is not, and a
/// surface counts by its knots.
unsigned pointCount(const Mesh& shape);
unsigned pointCount(const Curve& shape);
unsigned pointCount(const Surface& shape);
unsigned pointCount(const Lattice& shape);

/// Writes point i and whatever repeats it: the overlap of a periodic curve or surface. A surface's sample cache is
/// emptied.
inline void writePoint(Mesh& shape, unsigned i, vec3 point) {
    shape.points[i] = point;
}
inline void writePoint(Lattice& shape, unsigned i, vec3 point) {
    shape.points[i] = point;
}
inline void writePoint(Curve& shape, unsigned i, vec3 point) {
    shape.cv[i] = point;
    if (shape.form == kFormPeriodic && i < shape.degree && i + shape.cv.size() >= shape.degree) {
        shape.cv[i + shape.cv.size() - shape.degree] = point;
    }
}
void writePoint(Surface& shape, unsigned i, vec3 point);

/// Whether a write can change another point than the one it names.
inline bool repeatsPoints(const Mesh& /*shape*/) {
    return false;
}
inline bool repeatsPoints(const Lattice& /*shape*/) {
    return false;
}
inline bool repeatsPoints(const Curve& shape) {
    return shape.form == kFormPeriodic;
}
inline bool repeatsPoints(const Surface& shape) {
    return shape.formU == kFormPeriodic || shape.formV == kFormPeriodic;
}

/// `writePoint` for many points of one shape. The counts of the shape stay as they are meanwhile.
template <class T>
class PointWriter {
public:
    explicit PointWriter(T& shape) : shape_(shape) {}
    void operator()(unsigned i, vec3 point) { writePoint(shape_, i, point); }

private:
    T& shape_;
};

/// What a surface's forms ask for is looked up once.
template <>
class PointWriter<Surface> {
public:
    explicit PointWriter(Surface& shape);
    void operator()(unsigned i, vec3 point) {
        points_[i] = point;
        // Where both directions are periodic, a point of the corner is repeated along U and along V, not across.
        if (i < repeatedU_) {
            points_[offsetU_ + i] = point;
        }
        if (degreeV_ != 0 && i % countV_ < degreeV_) {
            points_[offsetV_ + i] = point;
        }
        if (!samples_.empty()) {
            samples_.clear();
        }
    }

private:
    SurfaceSamples& samples_;
    vec3* points_;
    unsigned countV_;
    unsigned repeatedU_ = 0; ///< the points from here on have no copy along U
    unsigned offsetU_ = 0;
    unsigned degreeV_ = 0; ///< the columns that have a copy along V
    unsigned offsetV_ = 0;
};

/// The bound of an index that names a point to be written: every point that the shape holds, overlap and surplus
/// included; of a periodic surface only those that its knots speak for.
inline std::size_t indexBound(const Mesh& shape) {
    return shape.points.size();
}
inline std::size_t indexBound(const Lattice& shape) {
    return shape.points.size();
}
inline std::size_t indexBound(const Curve& shape) {
    return shape.cv.size();
}
std::size_t indexBound(const Surface& shape);

/// The shape holds at least as many points as its own counts speak for, so that every point below pointCount can be
/// visited, and every point below indexBound written. Otherwise throws std::runtime_error with a text that names the
/// argument and what is wrong. An empty shape passes.
void requireConsistent(const Mesh& shape, const char* name);
void requireConsistent(const Curve& shape, const char* name);
void requireConsistent(const Surface& shape, const char* name);
void requireConsistent(const Lattice& shape, const char* name);

/// A lattice holds a point for each place that its three counts speak for. Otherwise throws std::runtime_error.
void requireAddressable(const Lattice& lattice, const char* name);

/// A point of the shape's object space in world space.
template <class T>
vec3 toWorld(const T& shape, vec3 point) {
    return shape.matrixLinear * point + shape.translation;
}

/// A world-space point in the shape's object space; not for lattices, which keep no inverse.
template <class T>
vec3 toObject(const T& shape, vec3 point) {
    return shape.inverseLinear * point + shape.inverseTranslation;
}

/// The shape's object-to-world matrix, last row 0, 0, 0, 1.
template <class T>
mat4 matrixOf(const T& shape) {
    return mat4(vec4(shape.matrixLinear[0], 0.0f), vec4(shape.matrixLinear[1], 0.0f), vec4(shape.matrixLinear[2], 0.0f),
                vec4(shape.translation, 1.0f));
}

/// The inverse that the shape's record keeps, last row 0, 0, 0, 1; not for lattices.
template <class T>
mat4 inverseMatrixOf(const T& shape) {
    return mat4(vec4(shape.inverseLinear[0], 0.0f), vec4(shape.inverseLinear[1], 0.0f),
                vec4(shape.inverseLinear[2], 0.0f), vec4(shape.inverseTranslation, 1.0f));
}

/// For each of `count` points 1 where `indices` names it, else 0; an index from `count` on names none.
std::vector<char> selectionMask(const std::vector<unsigned int>& indices, std::size_t count);

/// A shape of the single point `point`, for point-by-point work.
template <class T>
T onePointShape(vec3 point, const mat4& matrix);
template <>
Mesh onePointShape<Mesh>(vec3 point, const mat4& matrix);
template <>
Curve onePointShape<Curve>(vec3 point, const mat4& matrix);
template <>
Surface onePointShape<Surface>(vec3 point, const mat4& matrix);
template <>
Lattice onePointShape<Lattice>(vec3 point, const mat4& matrix);

/// The word that the method names of deformers end with: "Mesh", "Curve", "Surface", "Lattice".
template <class T>
constexpr const char* shapeName() = delete;
template <>
constexpr const char* shapeName<Mesh>() {
    return "Mesh";
}
template <>
constexpr const char* shapeName<Curve>() {
    return "Curve";
}
template <>
constexpr const char* shapeName<Surface>() {
    return "Surface";
}
template <>
constexpr const char* shapeName<Lattice>() {
    return "Lattice";
}

} // namespace zent
