#include "zent/nodes/wrap.h"

#include "zent/geometry/shapes.h"
#include "zent/math/require.h"

namespace zent {

template <class T>
T& wrap(float envelope, T& geometry, T const& driver, WrapBindings const& bindings) {
    if (!(envelope >= kThreshold)) {
        return geometry;
    }
    requireAtLeast("bindings", bindings.size(), geometry.points.size(), "geometry");
    for (std::size_t i = 0; i < geometry.points.size(); ++i) {
        for (int corner = 0; corner < 3; ++corner) {
            requireIndex("bindings", i, std::get<1>(bindings[i])[corner], driver.points.size(), "the driver");
        }
    }

    for (std::size_t i = 0; i < geometry.points.size(); ++i) {
        const auto& [bound_world, triangle, barycentric] = bindings[i];
        vec3 driven_world(0.0f);
        for (int corner = 0; corner < 3; ++corner) {
            driven_world += barycentric[corner] * toWorld(driver, driver.points[triangle[corner]]);
        }
        const vec3 point_world = toWorld(geometry, geometry.points[i]);
        geometry.points[i] = toObject(geometry, point_world + envelope * (driven_world - bound_world));
    }
    return geometry;
}

template Mesh& wrap(float, Mesh&, Mesh const&, WrapBindings const&);

Mesh& wrapMesh(float envelope, Mesh& geometry, Mesh const& driver, WrapBindings const& bindings) {
    return wrap(envelope, geometry, driver, bindings);
}

} // namespace zent
