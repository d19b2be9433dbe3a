#include <maya/MObject.h>

#include "Data.h"

MObject MObject::kNullObj;

MFn::Type MObject::apiType() const {
    return object_ == nullptr ? MFn::kInvalid : object_->type;
}

bool MObject::hasFn(MFn::Type type) const {
    return !isNull() && (apiType() == type || (apiType() == MFn::kDagNode && type == MFn::kDependencyNode));
}
