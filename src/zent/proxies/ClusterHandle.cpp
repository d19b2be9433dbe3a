#include "zent/proxies/ClusterHandle.h"

namespace zent {

ClusterHandle ClusterHandle::read(const Arguments& args, unsigned int start) {
    // Braces read the arguments in order, so that the first bad one is the one reported.
    return {zent::read<mat4>(args, start),      zent::read<mat4>(args, start + 1), zent::read<int>(args, start + 2),
            zent::read<vec3>(args, start + 4),  zent::read<vec3>(args, start + 5), zent::read<int>(args, start + 6),
            zent::read<vec3>(args, start + 7),  zent::read<vec3>(args, start + 8), zent::read<vec3>(args, start + 9),
            zent::read<vec3>(args, start + 10), zent::read<vec3>(args, start + 11)};
}

PointCluster ClusterHandle::pointCluster() const {
    return zent::pointCluster(first, second, angleMode, translate, rotate, rotateOrder, scale, rotatePivot, scalePivot,
                              rotatePivotTranslate, scalePivotTranslate);
}

Slot ClusterHandle::slot(unsigned int start, unsigned int index, const EntryPlace& entry) {
    switch (index - start) {
    case 0:
        return entrySlot(first, entry);
    case 1:
        return entrySlot(second, entry);
    case 2:
        return entrySlot(angleMode, entry);
    case 4:
        return entrySlot(translate, entry);
    case 5:
        return entrySlot(rotate, entry);
    case 6:
        return entrySlot(rotateOrder, entry);
    case 7:
        return entrySlot(scale, entry);
    case 8:
        return entrySlot(rotatePivot, entry);
    case 9:
        return entrySlot(scalePivot, entry);
    case 10:
        return entrySlot(rotatePivotTranslate, entry);
    case 11:
        return entrySlot(scalePivotTranslate, entry);
    default:
        return {};
    }
}

} // namespace zent
