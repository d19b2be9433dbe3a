#pragma once

#include "zent/math/types.h"

namespace zent {

/// One point of a deformed shape, by Maya and by the node function, in world space.
struct PointPair {
    vec3 maya{0.0f};
    vec3 zent{0.0f};

    float distance() const { return guardedLength(maya - zent); }
    /// Whether each component is within epsilon.
    bool agree(float epsilon) const;
};

/// The points of one record. A deformer's adapter is one, from its `init` to the next; points may be asked for in any
/// order.
class PointWalk {
public:
    /// Points that Maya's shape has.
    virtual unsigned int count() const = 0;
    virtual vec3 mayaPoint(unsigned int index) const = 0;
    virtual vec3 zentPoint(unsigned int index) const = 0;

    PointPair at(unsigned int index) const { return {mayaPoint(index), zentPoint(index)}; }

protected:
    PointWalk() = default;
    PointWalk(const PointWalk&) = default;
    PointWalk& operator=(const PointWalk&) = default;
    ~PointWalk() = default;
};

} // namespace zent
