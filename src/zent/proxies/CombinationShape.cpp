#include "zent/nodes/combinationShape.h"
#include "zent/proxies/Plain.h"

namespace zent {

class ProxyCombinationShape : public Plain<combinationShape> {
public:
    ProxyCombinationShape() : Plain("combinationShape", "outputWeight") {}
};
template Method method<ProxyCombinationShape>();

} // namespace zent
