#include "scene/fromBlock.h"

namespace scene {

namespace {

template <class T, class Shape>
std::shared_ptr<T> geometryOf(const Shape& shape) {
    auto data = std::make_shared<T>();
    data->type = T::kType;
    const zent::mat4 matrix = zent::matrixOf(shape);
    for (unsigned int i = 0; i < 16; ++i) {
        data->transform[i / 4][i % 4] = static_cast<double>(matrix[static_cast<int>(i / 4)][static_cast<int>(i % 4)]);
    }
    return data;
}

MPointArray widened(const std::vector<zent::vec3>& points) {
    MPointArray list;
    for (const zent::vec3& point : points) {
        list.append({static_cast<double>(point.x), static_cast<double>(point.y), static_cast<double>(point.z)});
    }
    return list;
}

MDoubleArray widened(const std::vector<float>& values) {
    MDoubleArray list;
    for (const float value : values) {
        list.append(static_cast<double>(value));
    }
    return list;
}

} // namespace

std::shared_ptr<Object> fromBlock(const zent::Mesh& mesh) {
    auto data = geometryOf<MeshData>(mesh);
    for (const zent::vec3& point : mesh.points) {
        data->points->append({point.x, point.y, point.z});
    }
    return data;
}

std::shared_ptr<Object> fromBlock(const zent::Curve& curve) {
    auto data = geometryOf<CurveData>(curve);
    data->degree = static_cast<int>(curve.degree);
    data->form = static_cast<int>(curve.form);
    data->points = widened(curve.cv);
    data->knots = widened(curve.knots);
    return data;
}

std::shared_ptr<Object> fromBlock(const zent::Surface& surface) {
    auto data = geometryOf<SurfaceData>(surface);
    data->degree = {static_cast<int>(surface.degreeU), static_cast<int>(surface.degreeV)};
    data->form = {static_cast<int>(surface.formU), static_cast<int>(surface.formV)};
    data->points = widened(surface.cv);
    data->knots = {widened(surface.knotsU), widened(surface.knotsV)};
    return data;
}

std::shared_ptr<Object> fromBlock(const zent::Lattice& lattice) {
    zent::requireAddressable(lattice, "lattice");
    auto data = geometryOf<LatticeData>(lattice);
    data->divisions = {lattice.s, lattice.t, lattice.u};
    data->points = widened(lattice.points);
    return data;
}

} // namespace scene
