#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <cstddef>

/// A walk over the nodes of the scene: all of them, or those that have a type's functions.
class OPENMAYA_EXPORT MItDependencyNodes {
public:
    explicit MItDependencyNodes(MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset(MFn::Type filter = MFn::kInvalid);
    MObject thisNode(MStatus* status = nullptr) const;
    MObject item(MStatus* status = nullptr) const { return thisNode(status); }

private:
    void skip();

    MFn::Type filter_;
    std::size_t position_ = 0;
};
