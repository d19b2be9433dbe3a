#include "zent/expression/expression.h"
#include "zent/expression/VM.h"
#include "zent/proxies/Plain.h"

#include <optional>
#include <tuple>
#include <vector>

namespace zent {

/// Nothing overwrites the code and the constants: the machine that runs them stays.
template <>
struct Inside<expression> {
    template <class Values>
    void operator()(const Values& values, svec<float, 16>& value) {
        if (!machine) {
            machine.emplace(std::vector<unsigned char>(std::get<1>(values)), std::vector<Value>(std::get<2>(values)));
        }
        value = machine->executeAgain(std::get<0>(values));
    }
    std::optional<VM> machine;
};

/// The adapter of `expression`: the inputs, the byte code and the constants, the last two as blocks of the resource
/// file. The code may write more outputs than the node has connected; the surplus is not compared.
class ProxyExpression : public Plain<expression> {
public:
    ProxyExpression() : Plain("expression", "output") {}
};
template Method method<ProxyExpression>();

} // namespace zent
