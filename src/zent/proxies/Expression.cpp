#include "zent/expression/expression.h"
#include "zent/proxies/Plain.h"

namespace zent {

/// The adapter of `expression`: the inputs, the byte code and the constants, the last two as blocks of the resource
/// file. The code may write more outputs than the node has connected; the surplus is not compared.
class ProxyExpression : public Plain<expression> {
public:
    ProxyExpression() : Plain("expression", "output") {}
};
template Method method<ProxyExpression>();

} // namespace zent
