#include "zent/nodes/worldVisibility.h"

namespace zent {

bool worldVisibility(bool a, bool b) {
    return a && b;
}

} // namespace zent
