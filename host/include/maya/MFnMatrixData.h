#pragma once

#include <maya/MFnBase.h>
#include <maya/MMatrix.h>

class OPENMAYA_EXPORT MFnMatrixData : public MFnBase {
public:
    explicit MFnMatrixData(const MObject& data, MStatus* status = nullptr);

    const MMatrix& matrix(MStatus* status = nullptr) const;
};
