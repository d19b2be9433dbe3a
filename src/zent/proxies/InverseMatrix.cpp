#include "zent/proxies/InverseMatrix.h"

namespace zent {

template Method method<ProxyInverseMatrix>();

} // namespace zent
