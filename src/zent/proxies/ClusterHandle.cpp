#include "zent/proxies/ClusterHandle.h"

namespace zent {

ClusterHandle ClusterHandle::read(const Arguments& args, unsigned int start) {
    // Braces read the arguments in order, so that the first bad one is the one reported.
    return {zent::read<mat4>(args.get(start)),     zent::read<mat4>(args.get(start + 1)),
            zent::read<int>(args.get(start + 2)),  zent::read<vec3>(args.get(start + 4)),
            zent::read<vec3>(args.get(start + 5)), zent::read<int>(args.get(start + 6)),
            zent::read<vec3>(args.get(start + 7)), zent::read<vec3>(args.get(start + 8)),
            zent::read<vec3>(args.get(start + 9)), zent::read<vec3>(args.get(start + 10)),
            zent::read<vec3>(args.get(start + 11))};
}

} // namespace zent
