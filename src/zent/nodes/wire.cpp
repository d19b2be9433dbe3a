#include "zent/nodes/wire.h"

#include "zent/geometry/nurbs.h"
#include "zent/math/require.h"
#include "zent/math/rotation.h"

#include <glm/geometric.hpp>

#include <algorithm>
#include <utility>

namespace zent {
namespace {

using WireTable = svec<float, 8>;

struct TwistRow {
    float parameter;
    float twist;
};

/// The twist (radians) at a parameter: it leaves a locator's row steeply and enters the next one flat. Rows of no twist
/// stand at the base wire's ends. The parameter is taken as it is given; only the curves clamp it.
float twistAngle(const Curve& baseWire, const WireTable& parameters, const WireTable& twists, float u) {
    TwistRow a{baseWire.domainStart(), 0.0f};
    TwistRow b{baseWire.domainEnd(), 0.0f};
    if (u <= parameters.front()) {
        b = {parameters.front(), twists.front()};
    } else if (!(u < parameters.back())) {
        const std::size_t last = parameters.size() - 1;
        a = {parameters[last], twists[last]};
    } else {
        const auto upper = std::upper_bound(parameters.begin(), parameters.end(), u);
        const auto i = static_cast<std::size_t>(upper - parameters.begin());
        a = {parameters[i - 1], twists[i - 1]};
        b = {parameters[i], twists[i]};
    }
    const float t = (u - a.parameter) / (b.parameter - a.parameter);
    const float fade = t * t - 1.0f;
    return b.twist + (a.twist - b.twist) * (fade * fade);
}

/// `rotation` times the rotation from the base wire's tangent to the deformed wire's. The derivatives are world-space
/// as they come: no curve's matrix is applied again.
quat tangentRotation(vec3 baseTangent, vec3 deformedTangent, float rotation) {
    const quat turn = rotationBetween(glm::normalize(baseTangent), glm::normalize(deformedTangent));
    return glm::angleAxis(rotationAngle(turn) * rotation, rotationAxis(turn));
}

/// An offset from the wire, taken apart along a frame, each axis then turned.
vec3 turnOffset(vec3 offset_world, const mat3& frame, const quat& turn) {
    const float along = glm::dot(offset_world, frame[0]);
    const vec3 across = offset_world - along * frame[0];
    const mat3 turned = glm::mat3_cast(turn) * frame;
    return along * turned[0] + glm::dot(across, frame[1]) * turned[1] + glm::dot(across, frame[2]) * turned[2];
}

} // namespace

vec3 wirePoint(vec3 point_world, float rotation, Curve const& baseWire, Curve const& deformedWire,
               svec<float, 8> const& locatorParameters, svec<float, 8> const& locatorTwists,
               WireBindings::value_type const& binding) {
    const auto& [unused, u, frame] = binding;
    const CurveTangent base = baseWire.tangent(u);
    const CurveTangent deformed = deformedWire.tangent(u);
    const vec3 offset_world = point_world - base.s;
    quat turn = tangentRotation(base.su, deformed.su, rotation);
    if (!locatorParameters.empty()) {
        turn = glm::angleAxis(twistAngle(baseWire, locatorParameters, locatorTwists, u), frame[0]) * turn;
    }
    return deformed.s + turnOffset(offset_world, frame, turn);
}

template <class T>
T& wire(T& geometry, float rotation, Curve const& baseWire, Curve const& deformedWire, svec<float, 8> locatorParameters,
        svec<float, 8> locatorTwists, WireBindings const& bindings) {
    if (bindings.empty()) {
        return geometry;
    }
    requireConsistent(geometry, "geometry");
    requireAtLeast("geometry points", pointsOf(geometry).size(), bindings.size(), "bindings");
    requireWires(baseWire, deformedWire, locatorParameters, locatorTwists);

    PointWriter<T> write(geometry);
    for (unsigned i = 0; i < bindings.size(); ++i) {
        const vec3 carried_world = wirePoint(toWorld(geometry, pointsOf(geometry)[i]), rotation, baseWire, deformedWire,
                                             locatorParameters, locatorTwists, bindings[i]);
        write(i, toObject(geometry, carried_world));
    }
    return geometry;
}

template Mesh& wire(Mesh&, float, Curve const&, Curve const&, svec<float, 8>, svec<float, 8>, WireBindings const&);
template Curve& wire(Curve&, float, Curve const&, Curve const&, svec<float, 8>, svec<float, 8>, WireBindings const&);

Mesh& wireMesh(Mesh& geometry, float rotation, Curve const& baseWire, Curve const& deformedWire,
               svec<float, 8> locatorParameters, svec<float, 8> locatorTwists, WireBindings const& bindings) {
    return wire(geometry, rotation, baseWire, deformedWire, std::move(locatorParameters), std::move(locatorTwists),
                bindings);
}

Curve& wireCurve(Curve& geometry, float rotation, Curve const& baseWire, Curve const& deformedWire,
                 svec<float, 8> locatorParameters, svec<float, 8> locatorTwists, WireBindings const& bindings) {
    return wire(geometry, rotation, baseWire, deformedWire, std::move(locatorParameters), std::move(locatorTwists),
                bindings);
}

void requireWires(Curve const& baseWire, Curve const& deformedWire, svec<float, 8> const& locatorParameters,
                  svec<float, 8> const& locatorTwists) {
    requireEvaluable(baseWire, "base wire");
    requireEvaluable(deformedWire, "deformed wire");
    requireAtLeast("locator twists", locatorTwists.size(), locatorParameters.size(), "locator parameters");
}

} // namespace zent
