#pragma once

#include "zent/nodes/cluster.h"
#include "zent/proxies/Access.h"
#include "zent/proxies/Evaluation.h"

namespace zent {

/// What a cluster does to every point alike: its matrices and its handle's channels.
struct ClusterHandle {
    mat4 first{1.0f};
    mat4 second{1.0f};
    int angleMode = 0;
    vec3 translate{0.0f};
    vec3 rotate{0.0f};
    int rotateOrder = 0;
    vec3 scale{1.0f};
    vec3 rotatePivot{0.0f};
    vec3 scalePivot{0.0f};
    vec3 rotatePivotTranslate{0.0f};
    vec3 scalePivotTranslate{0.0f};

    /// Reads the arguments from `start` on, the first matrix's; the weights among them are left to the adapter.
    static ClusterHandle read(const Arguments& args, unsigned int start);
    /// See pointCluster.
    PointCluster pointCluster() const;
    /// Where the argument stands, none for those that are no part of this.
    Slot slot(unsigned int start, unsigned int index, const EntryPlace& entry);
    /// The argument of the weights.
    static unsigned int weightsArgument(unsigned int start) { return start + 3; }
};

} // namespace zent
