#pragma once

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

/// Components with two indices: control points of a surface.
class OPENMAYA_EXPORT MFnDoubleIndexedComponent : public MFnComponent {
public:
    explicit MFnDoubleIndexedComponent(const MObject& component, MStatus* status = nullptr);

    MStatus getElements(MIntArray& u, MIntArray& v) const;
};
