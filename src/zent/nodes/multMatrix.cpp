#include "zent/nodes/multMatrix.h"

namespace zent {

mat4 multMatrix(svec<mat4, 8> in) {
    mat4 product(1.0f);
    for (auto m = in.rbegin(); m != in.rend(); ++m) {
        product = product * *m;
    }
    return product;
}

} // namespace zent
