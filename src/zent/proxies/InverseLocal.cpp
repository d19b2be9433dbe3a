#include "zent/proxies/InverseMatrix.h"

namespace zent {

class ProxyInverseLocal : public ProxyInverseMatrix {
public:
    std::string name() const override { return "inverseLocal"; }
};
template Method method<ProxyInverseLocal>();

} // namespace zent
