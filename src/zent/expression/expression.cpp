#include "zent/expression/expression.h"

#include "zent/expression/VM.h"

#include <utility>

namespace zent {

svec<float, 16> expression(svec<float, 16> inputs, std::vector<unsigned char> code, std::vector<Value> constants) {
    return VM(std::move(code), std::move(constants)).executeAgain(inputs);
}

} // namespace zent
