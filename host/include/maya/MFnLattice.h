#pragma once

#include <maya/MFnBase.h>
#include <maya/MPoint.h>

class OPENMAYA_EXPORT MFnLattice : public MFnBase {
public:
    explicit MFnLattice(const MObject& lattice, MStatus* status = nullptr);

    MStatus getDivisions(unsigned int& s, unsigned int& t, unsigned int& u) const;
    MPoint& point(unsigned int s, unsigned int t, unsigned int u, MStatus* status = nullptr);
};
