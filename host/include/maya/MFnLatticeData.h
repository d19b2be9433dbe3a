#pragma once

#include <maya/MFnBase.h>

class OPENMAYA_EXPORT MFnLatticeData : public MFnBase {
public:
    explicit MFnLatticeData(const MObject& data, MStatus* status = nullptr);

    MObject lattice(MStatus* status = nullptr) const;
};
