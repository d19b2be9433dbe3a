#include <maya/MFnNumericData.h>

#include "Data.h"
#include "setStatus.h"

namespace {

/// The numbers of data of one type, null for data of another.
const std::array<double, 3>* valuesOf(const MObject& data, MFn::Type type) {
    return data.apiType() == type ? &static_cast<const scene::NumericData*>(data.object())->values : nullptr;
}

template <class T>
MStatus read(const std::array<double, 3>* values, std::initializer_list<T*> targets) {
    if (values == nullptr) {
        return MStatus::kInvalidParameter;
    }
    auto value = values->begin();
    for (T* target : targets) {
        *target = static_cast<T>(*value++);
    }
    return MStatus::kSuccess;
}

} // namespace

MFnNumericData::MFnNumericData(const MObject& data, MStatus* status) : MFnBase(data) {
    setStatus(status, data.apiType() >= MFn::kData2Double && data.apiType() <= MFn::kData3Float);
}

MStatus MFnNumericData::getData2Float(float& x, float& y) const {
    return read(valuesOf(object_, MFn::kData2Float), {&x, &y});
}

MStatus MFnNumericData::getData2Double(double& x, double& y) const {
    return read(valuesOf(object_, MFn::kData2Double), {&x, &y});
}

MStatus MFnNumericData::getData3Float(float& x, float& y, float& z) const {
    return read(valuesOf(object_, MFn::kData3Float), {&x, &y, &z});
}

MStatus MFnNumericData::getData3Double(double& x, double& y, double& z) const {
    return read(valuesOf(object_, MFn::kData3Double), {&x, &y, &z});
}
