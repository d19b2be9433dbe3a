#pragma once

#include "zent/proxies/Method.h"
#include "zent/values/Port.h"

#include <tuple>
#include <type_traits>

/// What the adapters are made of. The C++ type drives all of it: `read<T>` takes a value of type T from a port,
/// `call<f>` reads the parameters of a node function in index order and calls it, `output` writes a value with its type
/// name.
/// See Plain.h for the adapters that need no more than that.
namespace zent {

template <class T>
T read(const Port& port) {
    return port.read<T>();
}

/// A value of Maya's side: port `index` of a record's results, which must be there.
const Port& resultPort(const std::vector<Port>& ports, std::size_t index);

template <class T>
T result(const std::vector<Port>& ports, std::size_t index) {
    return read<T>(resultPort(ports, index));
}

// ---- describing ----------------------------------------------------------------------------------------------------

/// An output by its plug, or an input.
template <class T>
ValueInfo valueInfo(std::string name = {}) {
    return {std::move(name), PortType<T>::name(), PortType<T>::least, PortType<T>::most};
}

/// The arguments of an adapter that reads them one by one: their types, each told once.
template <class... T>
struct Inputs {
    template <std::size_t I>
    static auto read(const Arguments& args) {
        return zent::read<std::tuple_element_t<I, std::tuple<T...>>>(args.get(I));
    }
    static std::vector<ValueInfo> info() { return {valueInfo<T>()...}; }
};

// ---- calling -------------------------------------------------------------------------------------------------------

template <class Function>
struct Caller;

template <class Result, class... Parameters>
struct Caller<Result (*)(Parameters...)> {
    template <std::size_t... I>
    static Result call(Result (*function)(Parameters...), const Arguments& args, std::index_sequence<I...>) {
        // Braces read the arguments in order, so that the first bad one is the one reported.
        std::tuple<std::decay_t<Parameters>...> values{read<std::decay_t<Parameters>>(args.get(I))...};
        return std::apply([&](auto&... value) -> Result { return function(std::forward<Parameters>(value)...); },
                          values);
    }
    static Result call(Result (*function)(Parameters...), const Arguments& args) {
        return call(function, args, std::index_sequence_for<Parameters...>{});
    }
    static std::vector<ValueInfo> arguments() { return {valueInfo<std::decay_t<Parameters>>()...}; }
    using Value = std::decay_t<Result>;
};

/// Calls a node function with the record's arguments 0, 1, 2 ..., each read as its parameter's type.
template <auto Function>
auto call(const Arguments& args) {
    return Caller<decltype(Function)>::call(Function, args);
}

/// The parameters of a node function as the arguments of a method.
template <auto Function>
std::vector<ValueInfo> argumentsOf() {
    return Caller<decltype(Function)>::arguments();
}

// ---- writing
// ---------------------------------------------------------------------------------------------------------

/// One output object, {"type", "value"}, or one with a "name", which Maya's side and the inputs of closures have.
json typedValue(std::string type, json&& value);
json typedValue(std::string name, std::string type, json&& value);

template <class T>
json output(const T& value) {
    return typedValue(PortType<T>::name(), toJson(value));
}
template <class T>
json output(std::string name, const T& value) {
    return typedValue(std::move(name), PortType<T>::name(), toJson(value));
}

/// An argument under its attribute's name, for a closure.
template <class T>
json input(std::string name, const Arguments& args, unsigned int index) {
    return output(std::move(name), read<T>(args.get(index)));
}

/// The array of one side's outputs, or of a closure's inputs.
template <class... Objects>
json results(Objects&&... objects) {
    json::array_t array;
    array.reserve(sizeof...(objects));
    (array.push_back(std::forward<Objects>(objects)), ...);
    return json(std::move(array));
}

/// A closure of its own: the node's name and its inputs.
json nodeReport(std::string node, json&& inputs);

// ---- registering ---------------------------------------------------------------------------------------------------

template <class P>
Method method() {
    return {[]() -> std::unique_ptr<Proxy> { return std::make_unique<P>(); },
            [] {
                const P proxy;
                MethodInfo info = proxy.info();
                info.name = proxy.name();
                info.isDeformer = proxy.isDeformer();
                return info;
            }};
}

} // namespace zent
