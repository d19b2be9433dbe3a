#include <maya/MItDependencyNodes.h>

#include "Scene.h"
#include "setStatus.h"

using scene::Scene;

MItDependencyNodes::MItDependencyNodes(MFn::Type filter, MStatus* status) : filter_(filter) {
    skip();
    setStatus(status, true);
}

bool MItDependencyNodes::isDone(MStatus* status) const {
    setStatus(status, true);
    return position_ >= Scene::current().nodeCount();
}

MStatus MItDependencyNodes::next() {
    if (isDone()) {
        return MStatus::kFailure;
    }
    ++position_;
    skip();
    return MStatus::kSuccess;
}

MStatus MItDependencyNodes::reset(MFn::Type filter) {
    filter_ = filter;
    position_ = 0;
    skip();
    return MStatus::kSuccess;
}

MObject MItDependencyNodes::thisNode(MStatus* status) const {
    return setStatus(status, !isDone()) ? MObject(&Scene::current().node(position_)) : MObject::kNullObj;
}

void MItDependencyNodes::skip() {
    while (filter_ != MFn::kInvalid && !isDone() && !thisNode().hasFn(filter_)) {
        ++position_;
    }
}
