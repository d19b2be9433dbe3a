#pragma once

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

/// Components with one index: vertices, edges and polygons of a mesh, control points of a curve.
class OPENMAYA_EXPORT MFnSingleIndexedComponent : public MFnComponent {
public:
    explicit MFnSingleIndexedComponent(const MObject& component, MStatus* status = nullptr);

    int element(int position, MStatus* status = nullptr) const;
    MStatus getElements(MIntArray& elements) const;
};
