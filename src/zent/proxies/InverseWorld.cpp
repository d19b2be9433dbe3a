#include "zent/proxies/InverseMatrix.h"

namespace zent {

class ProxyInverseWorld : public ProxyInverseMatrix {
public:
    std::string name() const override { return "inverseWorld"; }
};
template Method method<ProxyInverseWorld>();

} // namespace zent
