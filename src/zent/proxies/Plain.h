#pragma once

#include "zent/proxies/Access.h"
#include "zent/proxies/FunctionEvaluation.h"
#include "zent/proxies/Proxy.h"

namespace zent {

/// The one implementation of the plain adapters' operations.
class PlainProxy : public Proxy, public Bindable {
public:
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    std::string name() const override { return method_; }
    std::unique_ptr<Evaluation> bind(const Arguments& args) override { return bind_(args); }

protected:
    using ShowMaya = void (*)(json& outputs, const char* plug, const std::vector<Port>& ports);
    using ShowZent = void (*)(json& outputs, const Arguments& args);
    using Bind = std::unique_ptr<Evaluation> (*)(const Arguments& args);

    PlainProxy(const char* method, const char* plug, ShowMaya maya, ShowZent zent, Bind binding)
        : method_(method), plug_(plug), maya_(maya), zent_(zent), bind_(binding) {}

    MethodInfo plainInfo(Describe output, std::vector<ValueInfo>&& arguments) const;

private:
    const char* method_;
    const char* plug_;
    ShowMaya maya_;
    ShowZent zent_;
    Bind bind_;
};

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
/// An adapter with more to say overrides an operation, and includes Binding.h.
template <auto Function, class T = typename Caller<decltype(Function)>::Value>
class Plain : public PlainProxy {
public:
    /// An adapter whose Maya's side is not one T gives its own way of showing it.
    Plain(const char* method, const char* plug, ShowMaya showMaya = &showResult)
        : PlainProxy(method, plug, showMaya, &showZent, &bindFunction) {}

    MethodInfo info() const { return plainInfo(&Access<T>::info, argumentsOf<Function>()); }

private:
    static void showResult(json& outputs, const char* plug, const std::vector<Port>& ports) {
        Shown<T>::append(outputs, plug, Access<T>::result(ports, 0));
    }
    using Made = typename Caller<decltype(Function)>::Value;

    static void append(json& outputs, const Made& value) {
        constexpr bool kIsMadeOf =
            std::is_same_v<T, Euler> || std::is_same_v<T, Rotation> || std::is_same_v<T, std::vector<Made>>;
        if constexpr (kIsMadeOf) {
            Shown<T>::append(outputs, T{value});
        } else {
            Shown<Made>::append(outputs, value);
        }
    }
    static void showZent(json& outputs, const Arguments& args) { append(outputs, call<Function>(args)); }
    static std::unique_ptr<Evaluation> bindFunction(const Arguments& args) {
        return std::make_unique<FunctionEvaluation<Function>>(args, &append);
    }
};

} // namespace zent
