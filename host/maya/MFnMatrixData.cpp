#include <maya/MFnMatrixData.h>

#include "Data.h"
#include "setStatus.h"

MFnMatrixData::MFnMatrixData(const MObject& data, MStatus* status) : MFnBase(data) {
    setStatus(status, scene::as<scene::MatrixData>(data) != nullptr);
}

const MMatrix& MFnMatrixData::matrix(MStatus* status) const {
    static const MMatrix kIdentity;
    const auto* data = scene::as<scene::MatrixData>(object_);
    return setStatus(status, data != nullptr) ? data->matrix : kIdentity;
}
