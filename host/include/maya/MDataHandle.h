#pragma once

#include <maya/MFloatMatrix.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>

/// The data of a plug. Asked for as what it is not, a matrix is the identity and an object null.
class OPENMAYA_EXPORT MDataHandle {
public:
    MDataHandle() = default;
    /// The stand-in's own.
    explicit MDataHandle(MObject data) : data_(data) {}

    MObject data() { return data_; }
    const MMatrix& asMatrix() const;
    const MFloatMatrix& asFloatMatrix() const;
    MObject asMesh() const;
    MObject asNurbsCurve() const;
    MObject asNurbsSurface() const;
    /// The matrix from the geometry's own space to world space.
    const MMatrix& geometryTransformMatrix() const;

private:
    MObject data_;
};
