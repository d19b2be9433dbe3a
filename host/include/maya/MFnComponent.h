#pragma once

#include <maya/MFnBase.h>

/// Components of one kind.
class OPENMAYA_EXPORT MFnComponent : public MFnBase {
public:
    explicit MFnComponent(const MObject& component, MStatus* status = nullptr);

    MFn::Type componentType(MStatus* status = nullptr) const;
    /// How many components are listed; 0 where the component stands for all there are.
    int elementCount(MStatus* status = nullptr) const;
    bool isEmpty(MStatus* status = nullptr) const;
    bool isComplete(MStatus* status = nullptr) const;
};
