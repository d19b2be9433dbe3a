#include <maya/MDagPath.h>

#include "Node.h"
#include "setStatus.h"

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path) {
    if (node.apiType() != MFn::kDagNode) {
        path.node_ = MObject::kNullObj;
        return MStatus::kInvalidParameter;
    }
    path.node_ = node;
    return MStatus::kSuccess;
}

MObject MDagPath::node(MStatus* status) const {
    setStatus(status, isValid());
    return node_;
}

MString MDagPath::fullPathName(MStatus* status) const {
    return setStatus(status, isValid()) ? MString(static_cast<const scene::Node*>(node_.object())->path().c_str())
                                        : MString();
}
