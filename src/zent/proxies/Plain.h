#pragma once

#include "zent/proxies/Binding.h"
#include "zent/proxies/Proxy.h"

namespace zent {

/// The adapter of a method that is one node function and one plug: Maya's side reads the plug as a T, the node
/// function's side calls it with the record's arguments in order. T is the function's type of result, or a type that is
/// made of it: Euler or Rotation of a vec3, a list of its item.
///
///     class ProxyClamp : public Plain<clamp> {
///     public:
///         ProxyClamp() : Plain("clamp", "outputR") {}
///     };
///     template Method method<ProxyClamp>();
///
/// An adapter with more to say overrides an operation.
template <auto Function, class T = typename Caller<decltype(Function)>::Value>
class Plain : public Proxy {
public:
    Plain(const char* method, const char* plug) : method_(method), plug_(plug) {}

    json mayaResult(const std::vector<Port>& ports) const override {
        return results(output(plug_, result<T>(ports, 0)));
    }
    json zentResult(const Arguments& args) const override { return results(output(asValue(call<Function>(args)))); }
    std::string name() const override { return method_; }
    MethodInfo info() const { return {{}, {}, false, {valueInfo<T>(plug_)}, argumentsOf<Function>()}; }

private:
    template <class R>
    static auto asValue(const R& value) {
        constexpr bool kIsMadeOf =
            std::is_same_v<T, Euler> || std::is_same_v<T, Rotation> || std::is_same_v<T, std::vector<R>>;
        if constexpr (kIsMadeOf) {
            return T{value};
        } else {
            return value;
        }
    }

    const char* method_;
    const char* plug_;
};

} // namespace zent
