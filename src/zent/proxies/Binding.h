#pragma once

#include "zent/values/Port.h"
#include "zent/values/toJson.h"

#include <tuple>
#include <type_traits>

/// What the adapters are made of. The C++ type drives all of it: `read<T>` takes a value of type T from a port,
/// `call<f>` reads the parameters of a node function in index order and calls it, `output` writes a value with its type
/// name.
///
///     json ProxyClamp::mayaResult(const std::vector<Port>& ports) const {
///         return results(output("outputR", result<float>(ports, 0)));
///     }
///     json ProxyClamp::zentResult(const Arguments& args) const { return results(output(call<clamp>(args))); }
namespace zent {

// ---- reading -------------------------------------------------------------------------------------------------------

/// How a value of type T is read from a port. Types with no row of their own are blocks of the resource file or shapes.
template <class T>
struct Reader {
    static T read(const Port& port) { return port.castSingle().get<T>(); }
};

template <>
struct Reader<float> {
    static float read(const Port& port) { return port.castSingle().getFloat(); }
};
template <>
struct Reader<int> {
    static int read(const Port& port) { return port.castSingle().getInt(); }
};
template <>
struct Reader<unsigned int> {
    static unsigned int read(const Port& port) { return static_cast<unsigned int>(port.castSingle().getInt()); }
};
template <>
struct Reader<bool> {
    static bool read(const Port& port) { return port.castSingle().getBool(); }
};
template <>
struct Reader<vec2> {
    static vec2 read(const Port& port) { return port.castSingle().getVec2(); }
};
template <>
struct Reader<vec3> {
    static vec3 read(const Port& port) { return port.castSingle().getVec3(); }
};
template <>
struct Reader<vec4> {
    static vec4 read(const Port& port) { return port.castSingle().getVec4(); }
};
template <>
struct Reader<mat4> {
    static mat4 read(const Port& port) { return port.castSingle().getMat4(); }
};
template <>
struct Reader<Euler> {
    static Euler read(const Port& port) { return {port.castSingle().getVec3()}; }
};

template <std::size_t N>
struct Reader<svec<float, N>> {
    static svec<float, N> read(const Port& port) { return port.getFloatVector<N>(); }
};
template <std::size_t N>
struct Reader<svec<int, N>> {
    static svec<int, N> read(const Port& port) { return port.getIntVector<N>(); }
};
template <std::size_t N>
struct Reader<svec<unsigned int, N>> {
    static svec<unsigned int, N> read(const Port& port) { return port.getUIntVector<N>(); }
};
template <std::size_t N>
struct Reader<svec<bool, N>> {
    static svec<bool, N> read(const Port& port) { return port.getBoolVector<N>(); }
};
template <std::size_t N>
struct Reader<svec<vec2, N>> {
    static svec<vec2, N> read(const Port& port) { return port.getVec2Vector<N>(); }
};
template <std::size_t N>
struct Reader<svec<vec3, N>> {
    static svec<vec3, N> read(const Port& port) { return port.getVec3Vector<N>(); }
};
template <std::size_t N>
struct Reader<svec<mat4, N>> {
    static svec<mat4, N> read(const Port& port) { return port.getMat4Vector<N>(); }
};
template <std::size_t N>
struct Reader<svec<Euler, N>> {
    static svec<Euler, N> read(const Port& port) {
        svec<Euler, N> list;
        for (const vec3& angles : port.getVec3Vector<N>()) {
            list.push_back({angles});
        }
        return list;
    }
};

template <std::size_t N>
struct Reader<std::array<int, N>> {
    static std::array<int, N> read(const Port& port) { return port.getIntArray<N>(); }
};
template <std::size_t N>
struct Reader<std::array<unsigned int, N>> {
    static std::array<unsigned int, N> read(const Port& port) { return port.getUIntArray<N>(); }
};
template <std::size_t N>
struct Reader<std::array<bool, N>> {
    static std::array<bool, N> read(const Port& port) { return port.getBoolArray<N>(); }
};
template <std::size_t N>
struct Reader<std::array<vec2, N>> {
    static std::array<vec2, N> read(const Port& port) { return port.getVec2Array<N>(); }
};
template <std::size_t N>
struct Reader<std::array<vec3, N>> {
    static std::array<vec3, N> read(const Port& port) { return port.getVec3Array<N>(); }
};

template <std::size_t N>
struct Reader<static_vector<float, N>> {
    static static_vector<float, N> read(const Port& port) { return port.getFloatVectorFixed<N>(); }
};
template <std::size_t N>
struct Reader<static_vector<int, N>> {
    static static_vector<int, N> read(const Port& port) { return port.getIntVectorFixed<N>(); }
};
template <std::size_t N>
struct Reader<static_vector<bool, N>> {
    static static_vector<bool, N> read(const Port& port) { return port.getBoolVectorFixed<N>(); }
};
template <std::size_t N>
struct Reader<static_vector<vec3, N>> {
    static static_vector<vec3, N> read(const Port& port) { return port.getVec3VectorFixed<N>(); }
};

template <>
struct Reader<std::vector<float>> {
    static std::vector<float> read(const Port& port) { return port.getFloatList(); }
};
template <>
struct Reader<std::vector<int>> {
    static std::vector<int> read(const Port& port) { return port.getIntList(); }
};
template <>
struct Reader<std::vector<bool>> {
    static std::vector<bool> read(const Port& port) { return port.getBoolList(); }
};
template <>
struct Reader<std::vector<vec3>> {
    static std::vector<vec3> read(const Port& port) { return port.getVec3List(); }
};
template <>
struct Reader<std::vector<mat4>> {
    static std::vector<mat4> read(const Port& port) { return port.getMat4List(); }
};

/// Multis by their logical index. (A weight map that is a resource block is read through `Element::get`.)
template <>
struct Reader<std::map<unsigned int, float>> {
    static std::map<unsigned int, float> read(const Port& port) { return port.getFloatMap(); }
};
template <>
struct Reader<std::map<unsigned int, vec3>> {
    static std::map<unsigned int, vec3> read(const Port& port) { return port.getVec3Map(); }
};
template <>
struct Reader<std::map<std::pair<unsigned int, unsigned int>, float>> {
    static std::map<std::pair<unsigned int, unsigned int>, float> read(const Port& port) {
        std::map<std::pair<unsigned int, unsigned int>, float> map;
        for (const Element& element : port.elements()) {
            map[element.indexPair()] = element.getFloat();
        }
        return map;
    }
};

template <class T>
T read(const Port& port) {
    return Reader<T>::read(port);
}

/// A value of Maya's side: port `index` of a record's results, which must be there.
const Port& resultPort(const std::vector<Port>& ports, std::size_t index);

template <class T>
T result(const std::vector<Port>& ports, std::size_t index) {
    return read<T>(resultPort(ports, index));
}

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
};

/// Calls a node function with the record's arguments 0, 1, 2 ..., each read as its parameter's type.
template <auto Function>
auto call(const Arguments& args) {
    return Caller<decltype(Function)>::call(Function, args);
}

// ---- writing -------------------------------------------------------------------------------------------------------

template <class T>
struct TypeName;
template <>
struct TypeName<float> {
    static std::string text() { return "Float"; }
};
template <>
struct TypeName<int> {
    static std::string text() { return "Int"; }
};
template <>
struct TypeName<bool> {
    static std::string text() { return "Bool"; }
};
template <>
struct TypeName<vec2> {
    static std::string text() { return "Vec2"; }
};
template <>
struct TypeName<vec3> {
    static std::string text() { return "Vec3"; }
};
template <>
struct TypeName<vec4> {
    static std::string text() { return "Vec4"; }
};
template <>
struct TypeName<quat> {
    static std::string text() { return "Vec4"; }
};
template <>
struct TypeName<mat4> {
    static std::string text() { return "Mat4"; }
};
template <>
struct TypeName<Euler> {
    static std::string text() { return "Euler"; }
};
template <>
struct TypeName<Curve> {
    static std::string text() { return "Curve"; }
};
template <>
struct TypeName<Surface> {
    static std::string text() { return "Surface"; }
};

template <template <class...> class List, class T, class... Rest>
struct TypeName<List<T, Rest...>> {
    static std::string text() { return TypeName<T>::text() + "[]"; }
};
template <class T, std::size_t N>
struct TypeName<std::array<T, N>> {
    static std::string text() { return TypeName<T>::text() + "[]"; }
};
template <class T, std::size_t N, class Options>
struct TypeName<boost::container::static_vector<T, N, Options>> {
    static std::string text() { return TypeName<T>::text() + "[]"; }
};
template <class T, std::size_t N, class Allocator, class Options>
struct TypeName<boost::container::small_vector<T, N, Allocator, Options>> {
    static std::string text() { return TypeName<T>::text() + "[]"; }
};

/// One output object, {"type", "value"}, or one with a "name", which Maya's side and the inputs of closures have.
json typedValue(std::string type, json&& value);
json typedValue(std::string name, std::string type, json&& value);

template <class T>
json output(const T& value) {
    return typedValue(TypeName<T>::text(), toJson(value));
}
template <class T>
json output(std::string name, const T& value) {
    return typedValue(std::move(name), TypeName<T>::text(), toJson(value));
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

} // namespace zent
