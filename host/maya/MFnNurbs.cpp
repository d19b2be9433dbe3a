#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>

#include "Data.h"
#include "setStatus.h"

using scene::CurveData;
using scene::SurfaceData;

namespace {

/// A list in the asked space.
MStatus copyPoints(const MPointArray& points, const MMatrix& transform, MSpace::Space space, MPointArray& result) {
    result = points;
    if (space == MSpace::kPostTransform || space == MSpace::kWorld) {
        for (unsigned int i = 0; i < result.length(); ++i) {
            result[i] = scene::transformed(result[i], transform);
        }
    }
    return MStatus::kSuccess;
}

MStatus copyKnots(const SurfaceData* surface, std::size_t direction, MDoubleArray& knots) {
    if (surface == nullptr) {
        return MStatus::kFailure;
    }
    knots = surface->knots[direction];
    return MStatus::kSuccess;
}

} // namespace

MFnNurbsCurve::MFnNurbsCurve(const MObject& curve, MStatus* status) : MFnBase(curve) {
    setStatus(status, scene::as<CurveData>(curve) != nullptr);
}

int MFnNurbsCurve::degree(MStatus* status) const {
    const auto* curve = scene::as<CurveData>(object_);
    return setStatus(status, curve != nullptr) ? curve->degree : 0;
}

MFnNurbsCurve::Form MFnNurbsCurve::form(MStatus* status) const {
    const auto* curve = scene::as<CurveData>(object_);
    return setStatus(status, curve != nullptr) ? static_cast<Form>(curve->form) : kInvalid;
}

MStatus MFnNurbsCurve::getCVs(MPointArray& points, MSpace::Space space) const {
    const auto* curve = scene::as<CurveData>(object_);
    return curve == nullptr ? MStatus(MStatus::kFailure) : copyPoints(curve->points, curve->transform, space, points);
}

MStatus MFnNurbsCurve::getKnots(MDoubleArray& knots) const {
    const auto* curve = scene::as<CurveData>(object_);
    if (curve == nullptr) {
        return MStatus::kFailure;
    }
    knots = curve->knots;
    return MStatus::kSuccess;
}

MFnNurbsSurface::MFnNurbsSurface(const MObject& surface, MStatus* status) : MFnBase(surface) {
    setStatus(status, scene::as<SurfaceData>(surface) != nullptr);
}

int MFnNurbsSurface::degreeU(MStatus* status) const {
    const auto* surface = scene::as<SurfaceData>(object_);
    return setStatus(status, surface != nullptr) ? surface->degree[0] : 0;
}

int MFnNurbsSurface::degreeV(MStatus* status) const {
    const auto* surface = scene::as<SurfaceData>(object_);
    return setStatus(status, surface != nullptr) ? surface->degree[1] : 0;
}

MFnNurbsSurface::Form MFnNurbsSurface::formInU(MStatus* status) const {
    const auto* surface = scene::as<SurfaceData>(object_);
    return setStatus(status, surface != nullptr) ? static_cast<Form>(surface->form[0]) : kInvalid;
}

MFnNurbsSurface::Form MFnNurbsSurface::formInV(MStatus* status) const {
    const auto* surface = scene::as<SurfaceData>(object_);
    return setStatus(status, surface != nullptr) ? static_cast<Form>(surface->form[1]) : kInvalid;
}

MStatus MFnNurbsSurface::getKnotsInU(MDoubleArray& knots) const {
    return copyKnots(scene::as<SurfaceData>(object_), 0, knots);
}

MStatus MFnNurbsSurface::getKnotsInV(MDoubleArray& knots) const {
    return copyKnots(scene::as<SurfaceData>(object_), 1, knots);
}

MStatus MFnNurbsSurface::getCVs(MPointArray& points, MSpace::Space space) const {
    const auto* surface = scene::as<SurfaceData>(object_);
    return surface == nullptr ? MStatus(MStatus::kFailure)
                              : copyPoints(surface->points, surface->transform, space, points);
}
