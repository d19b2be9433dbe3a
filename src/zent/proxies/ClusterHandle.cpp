#include "zent/proxies/ClusterHandle.h"

#include "zent/nodes/cluster.h"

namespace zent {

ClusterHandle ClusterHandle::read(const Arguments& args, unsigned int start) {
    // Braces read the arguments in order, so that the first bad one is the one reported.
    return {zent::read<mat4>(args, start),      zent::read<mat4>(args, start + 1), zent::read<int>(args, start + 2),
            zent::read<vec3>(args, start + 4),  zent::read<vec3>(args, start + 5), zent::read<int>(args, start + 6),
            zent::read<vec3>(args, start + 7),  zent::read<vec3>(args, start + 8), zent::read<vec3>(args, start + 9),
            zent::read<vec3>(args, start + 10), zent::read<vec3>(args, start + 11)};
}

std::function<vec3(vec3, float)> ClusterHandle::pointCluster() const {
    return zent::pointCluster(first, second, angleMode, translate, rotate, rotateOrder, scale, rotatePivot, scalePivot,
                              rotatePivotTranslate, scalePivotTranslate);
}

} // namespace zent
