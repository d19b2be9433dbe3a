#pragma once

#include "zent/math/types.h"

#include <array>
#include <memory>
#include <vector>

namespace zent {

class Proxy;

/// One point of a deformed shape, by Maya and by the node function, in world space.
struct PointPair {
    vec3 maya{0.0f};
    vec3 zent{0.0f};

    float distance() const { return guardedLength(maya - zent); }
    /// Whether each component is within epsilon.
    bool agree(float epsilon) const;
};

/// What a shape has besides its points.
struct ShapeLayout {
    const char* kind = "";  ///< "mesh", "curve", "surface" or "lattice"
    std::size_t points = 0; ///< with the overlap of a periodic curve, whose points repeat the first ones
    /// Of a curve the first, of a surface those of U and V.
    std::array<unsigned int, 2> degrees{};
    std::array<unsigned int, 2> forms{};
    std::array<std::vector<float>, 2> knots;
    std::array<unsigned int, 3> divisions{}; ///< of a lattice
};

/// The points of one record, in any order. It holds only as long as its adapter is at that record; walks of one adapter
/// do not disturb each other.
class PointWalk {
public:
    PointWalk() = default;
    PointWalk(const PointWalk&) = delete;
    PointWalk& operator=(const PointWalk&) = delete;
    virtual ~PointWalk() = default;

    /// Points that Maya's shape has.
    virtual unsigned int count() const = 0;
    /// Of Maya's shape.
    virtual ShapeLayout layout() const = 0;
    virtual vec3 maya(unsigned int index) const = 0;
    virtual vec3 zent(unsigned int index) = 0;

    PointPair at(unsigned int index) { return {maya(index), zent(index)}; }
    /// The first point from one on whose pair does not agree, or the number of points.
    virtual unsigned int firstOff(unsigned int from, float epsilon);
};

/// A deformer's adapter, apart from its operations: after its `init` it gives out walks.
class PointSource {
public:
    virtual std::unique_ptr<PointWalk> walk() const = 0;

protected:
    PointSource() = default;
    ~PointSource() = default;
    PointSource(const PointSource&) = delete;
    PointSource& operator=(const PointSource&) = delete;
};

/// A walk over the record that a deformer's adapter is at. Throws std::bad_cast for an adapter of no deformer.
std::unique_ptr<PointWalk> walkOf(const Proxy& proxy);

} // namespace zent
