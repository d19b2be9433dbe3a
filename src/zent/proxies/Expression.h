#pragma once

#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of `expression`: the inputs, the byte code and the constants, the last two as blocks of the resource
/// file. The code may write more outputs than the node has connected; the surplus is not compared.
class ProxyExpression : public Proxy {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return "expression"; }
};

} // namespace zent
