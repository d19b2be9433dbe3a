#pragma once

#include "zent/proxies/Method.h"
#include "zent/proxies/MethodInfo.h"
#include "zent/values/json.h"
#include "zent/values/readings.h"

#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// What most adapters are made of, without JSON in sight. The C++ type drives all of it: a value of type T is read from
/// an argument or a result, written as an output, and described. Access.cpp has the list of all types.
namespace zent {

class Arguments;
class Port;

/// A value that a record gives.
template <class T>
struct Access {
    static T argument(const Arguments& args, unsigned int index);
    /// Throws std::runtime_error where the record has no such result.
    static T result(const std::vector<Port>& ports, unsigned int index);
    static ValueInfo info(std::string name);
};

/// A value as one more output, by its type, and by its plug's name on Maya's side.
template <class T>
struct Shown {
    static void append(json& outputs, const T& value);
    static void append(json& outputs, const char* plug, const T& value);
};

using Describe = ValueInfo (*)(std::string name);

std::vector<ValueInfo> describe(std::initializer_list<Describe> types);

template <class T>
T read(const Arguments& args, unsigned int index) {
    return Access<T>::argument(args, index);
}

template <class T>
ValueInfo valueInfo(std::string name = {}) {
    return Access<T>::info(std::move(name));
}

/// The arguments of an adapter that reads them one by one.
template <class... T>
std::vector<ValueInfo> argumentsOfTypes() {
    return describe({&Access<T>::info...});
}

// ---- calling -------------------------------------------------------------------------------------------------------

template <class Function>
struct Caller;

template <class Result, class... Parameters>
struct Caller<Result (*)(Parameters...)> {
    using Value = std::decay_t<Result>;
    using Values = std::tuple<std::decay_t<Parameters>...>;

    template <std::size_t... I>
    static Values read(const Arguments& args, std::index_sequence<I...>) {
        // Braces read the arguments in order, so that the first bad one is the one reported.
        return Values{zent::read<std::decay_t<Parameters>>(args, I)...};
    }
    static Values read(const Arguments& args) { return read(args, std::index_sequence_for<Parameters...>{}); }
    template <std::size_t... I>
    static Result call(Result (*function)(Parameters...), const Arguments& args, std::index_sequence<I...> all) {
        Values values = read(args, all);
        return function(std::forward<Parameters>(std::get<I>(values))...);
    }
    static Result call(Result (*function)(Parameters...), const Arguments& args) {
        return call(function, args, std::index_sequence_for<Parameters...>{});
    }
    static std::vector<ValueInfo> arguments() { return argumentsOfTypes<std::decay_t<Parameters>...>(); }
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
