#pragma once

#include "zent/values/Element.h"
#include "zent/values/geometryJson.h"
#include "zent/values/readings.h"

#include <array>
#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// The table of value types. A new type is one row here: all that reads, names, writes or compares a value goes by it.
namespace zent {

class Port;

/// Blocks of the resource file that are vectors of plain values.
using IndexList = std::vector<unsigned int>;
using ByteCode = std::vector<unsigned char>;
using Constants = std::vector<Value>;

/// Floats as the array of doubles that they are in JSON, and back.
json numbersToJson(const float* numbers, std::size_t count);
void numbersFromJson(const json& value, float* numbers, std::size_t count);

// ---- types of one entry --------------------------------------------------------------------------------------------

/// A row: the type's name, and, as far as there is use for them, `read` of an entry, `toJson`, and `fromJson` of a
/// result that is compared.
template <class T>
struct ValueType;

template <class T, auto Getter>
struct PlainRow {
    static T read(const Element& element) { return static_cast<T>((element.*Getter)()); }
    static json toJson(T value) { return json(value); }
};

/// A type that is nothing but floats.
template <class T>
struct NumbersRow {
    static constexpr std::size_t kCount = sizeof(T) / sizeof(float);
    static json toJson(const T& value) {
        std::array<float, kCount> numbers;
        std::memcpy(numbers.data(), &value, sizeof numbers);
        return numbersToJson(numbers.data(), kCount);
    }
    static T fromJson(const json& value) {
        std::array<float, kCount> numbers;
        numbersFromJson(value, numbers.data(), kCount);
        T result{};
        std::memcpy(static_cast<void*>(&result), numbers.data(), sizeof numbers);
        return result;
    }
};
template <class T, auto Getter>
struct VectorRow : NumbersRow<T> {
    static T read(const Element& element) { return T{(element.*Getter)()}; }
};

/// A shape, or a block of the resource file.
template <class T>
struct BlockRow {
    static T read(const Element& element) { return element.get<T>(); }
};
template <class T>
struct RecordRow : BlockRow<T> {
    static json toJson(const T& value) { return json(value); }
    static T fromJson(const json& value) { return value.get<T>(); }
};

// clang-format off
template <> struct ValueType<float> : PlainRow<float, &Element::getFloat> {
    static constexpr auto name = "Float";
    static json toJson(float value) { return json(static_cast<double>(value)); }
    static float fromJson(const json& value) { return value.get<float>(); }
};
template <> struct ValueType<int> : PlainRow<int, &Element::getInt> { static constexpr auto name = "Int"; };
template <> struct ValueType<unsigned int> : PlainRow<unsigned int, &Element::getInt> {
    static constexpr auto name = "Int";
};
template <> struct ValueType<bool> : PlainRow<bool, &Element::getBool> { static constexpr auto name = "Bool"; };
template <> struct ValueType<vec2> : VectorRow<vec2, &Element::getVec2> { static constexpr auto name = "Vec2"; };
template <> struct ValueType<vec3> : VectorRow<vec3, &Element::getVec3> { static constexpr auto name = "Vec3"; };
template <> struct ValueType<vec4> : VectorRow<vec4, &Element::getVec4> { static constexpr auto name = "Vec4"; };
template <> struct ValueType<quat> : NumbersRow<quat> { static constexpr auto name = "Vec4"; };
template <> struct ValueType<mat4> : VectorRow<mat4, &Element::getMat4> { static constexpr auto name = "Mat4"; };
template <> struct ValueType<Vertex> : NumbersRow<Vertex> { static constexpr auto name = "Vertex"; };
template <> struct ValueType<Euler> : VectorRow<Euler, &Element::getVec3> { static constexpr auto name = "Euler"; };
template <> struct ValueType<Rotation> : VectorRow<Rotation, &Element::getVec3> {
    static constexpr auto name = "Euler";
    static json toJson(const Rotation& value);
};
template <> struct ValueType<Curve> : RecordRow<Curve> { static constexpr auto name = "Curve"; };
template <> struct ValueType<Surface> : RecordRow<Surface> { static constexpr auto name = "Surface"; };
template <> struct ValueType<Mesh> : BlockRow<Mesh> { static constexpr auto name = "Mesh"; };
template <> struct ValueType<Lattice> : BlockRow<Lattice> { static constexpr auto name = "Lattice"; };
template <> struct ValueType<WeightMap> : BlockRow<WeightMap> { static constexpr auto name = "WeightMap"; };
template <> struct ValueType<DeltaList> : BlockRow<DeltaList> { static constexpr auto name = "DeltaList"; };
template <> struct ValueType<SkinWeights> : BlockRow<SkinWeights> { static constexpr auto name = "SkinWeightList"; };
template <> struct ValueType<WireBindings> : BlockRow<WireBindings> { static constexpr auto name = "WireBindings"; };
template <> struct ValueType<IndexList> : BlockRow<IndexList> { static constexpr auto name = "IndexList"; };
template <> struct ValueType<ByteCode> : BlockRow<ByteCode> { static constexpr auto name = "ByteCode"; };
template <> struct ValueType<Constants> : BlockRow<Constants> { static constexpr auto name = "Constants"; };
// clang-format on

/// The types by which results are compared, in the order in which their names are looked up.
template <class... T>
struct TypeList {};
using ComparedTypes = TypeList<float, Euler, vec2, vec3, Vertex, vec4, mat4, Curve, Surface>;

// ---- types of a port -----------------------------------------------------------------------------------------------

inline constexpr unsigned kAnyNumber = std::numeric_limits<unsigned>::max();

/// How a value of type T is read from the entries of a port: from one, unless T is a list or a map. `least` and `most`
/// are the numbers of entries that it takes. `read` is defined with Port.
template <class T>
struct OneEntry {
    static constexpr unsigned least = 1;
    static constexpr unsigned most = 1;
    static std::string name() { return ValueType<T>::name; }
    static json toJson(const T& value) { return ValueType<T>::toJson(value); }
    static T read(const Port& port);
};

/// Any number of entries, in order.
template <class List, class Item>
struct EntryList {
    static constexpr unsigned least = 0;
    static constexpr unsigned most = kAnyNumber;
    static std::string name() { return std::string(ValueType<Item>::name) + "[]"; }
    static json toJson(const List& list) {
        json::array_t array;
        array.reserve(list.size());
        for (const auto& value : list) {
            array.push_back(ValueType<Item>::toJson(static_cast<const Item&>(value)));
        }
        return json(std::move(array));
    }
    static List read(const Port& port);
};

/// Entries by their first logical index or first two; a later one with the same key overwrites the earlier one.
template <class Key, class Item>
struct EntryMap {
    static constexpr unsigned least = 0;
    static constexpr unsigned most = kAnyNumber;
    static std::string name() {
        return std::string(ValueType<Item>::name) + (std::is_same_v<Key, unsigned int> ? "{}" : "{}{}");
    }
    static std::map<Key, Item> read(const Port& port);
};

template <class T>
struct PortType : OneEntry<T> {};
template <class T, std::size_t N>
struct PortType<svec<T, N>> : EntryList<svec<T, N>, T> {};
template <class T>
struct PortType<std::vector<T>> : EntryList<std::vector<T>, T> {};
template <class T, std::size_t N>
struct PortType<std::array<T, N>> : EntryList<std::array<T, N>, T> {
    static constexpr unsigned least = N;
    static constexpr unsigned most = N;
    static std::array<T, N> read(const Port& port);
};
template <class T, std::size_t N>
struct PortType<static_vector<T, N>> : EntryList<static_vector<T, N>, T> {
    static constexpr unsigned most = N;
    static static_vector<T, N> read(const Port& port);
};
template <class Key, class T>
struct PortType<std::map<Key, T>> : EntryMap<Key, T> {};

// Vectors that are blocks of the resource file, and so one entry.
template <>
struct PortType<IndexList> : OneEntry<IndexList> {};
template <>
struct PortType<ByteCode> : OneEntry<ByteCode> {};
template <>
struct PortType<Constants> : OneEntry<Constants> {};
template <>
struct PortType<DeltaList> : OneEntry<DeltaList> {};
template <>
struct PortType<SkinWeights> : OneEntry<SkinWeights> {};
template <>
struct PortType<WireBindings> : OneEntry<WireBindings> {};

template <class T>
json toJson(const T& value) {
    return PortType<T>::toJson(value);
}

} // namespace zent
