#include <maya/MFnBase.h>

#include "setStatus.h"

MObject MFnBase::object(MStatus* status) const {
    setStatus(status, !object_.isNull());
    return object_;
}
