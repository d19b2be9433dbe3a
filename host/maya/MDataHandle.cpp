#include <maya/MDataHandle.h>

#include "Data.h"

namespace {

template <class T>
MObject onlyIf(const MObject& data) {
    return scene::as<T>(data) != nullptr ? data : MObject::kNullObj;
}

} // namespace

const MMatrix& MDataHandle::asMatrix() const {
    static const MMatrix kIdentity;
    const auto* data = scene::as<scene::MatrixData>(data_);
    return data == nullptr ? kIdentity : data->matrix;
}

const MFloatMatrix& MDataHandle::asFloatMatrix() const {
    static const MFloatMatrix kIdentity;
    const auto* data = scene::as<scene::MatrixData>(data_);
    return data == nullptr ? kIdentity : data->narrowed;
}

MObject MDataHandle::asMesh() const {
    return onlyIf<scene::MeshData>(data_);
}

MObject MDataHandle::asNurbsCurve() const {
    return onlyIf<scene::CurveData>(data_);
}

MObject MDataHandle::asNurbsSurface() const {
    return onlyIf<scene::SurfaceData>(data_);
}

const MMatrix& MDataHandle::geometryTransformMatrix() const {
    static const MMatrix kIdentity;
    const scene::GeometryData* geometry = scene::asGeometry(data_);
    return geometry == nullptr ? kIdentity : geometry->transform;
}
