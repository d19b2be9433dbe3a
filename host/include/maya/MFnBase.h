#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>

/// A set of functions on an object.
class OPENMAYA_EXPORT MFnBase {
public:
    MFnBase() = default;
    MObject object(MStatus* status = nullptr) const;

protected:
    explicit MFnBase(const MObject& object) : object_(object) {}

    MObject object_;
};
