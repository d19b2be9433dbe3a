#pragma once

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

/// Components with three indices: points of a lattice.
class OPENMAYA_EXPORT MFnTripleIndexedComponent : public MFnComponent {
public:
    explicit MFnTripleIndexedComponent(const MObject& component, MStatus* status = nullptr);

    MStatus getElements(MIntArray& s, MIntArray& t, MIntArray& u) const;
};
