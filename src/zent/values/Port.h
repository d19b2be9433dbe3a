#pragma once

#include "zent/values/Element.h"
#include "zent/values/ValueType.h"

#include <array>
#include <map>
#include <vector>

namespace zent {

/// The entries of one attribute number, in manifest order.
class Port {
public:
    void add(Element&& element) { elements_.push_back(std::move(element)); }
    const std::vector<Element>& elements() const { return elements_; }

    /// The one element of a port that has exactly one; "not single" otherwise.
    const Element& castSingle() const;

    /// The value as a T: the one entry of a type with a row in the table of value types, a list of entries, or a map of
    /// entries by their logical indices, as the table of port types tells.
    template <class T>
    T read() const {
        return PortType<T>::read(*this);
    }

    template <std::size_t N>
    svec<float, N> getFloatVector() const {
        return read<svec<float, N>>();
    }
    template <std::size_t N>
    svec<int, N> getIntVector() const {
        return read<svec<int, N>>();
    }
    template <std::size_t N>
    svec<unsigned int, N> getUIntVector() const {
        return read<svec<unsigned int, N>>();
    }
    template <std::size_t N>
    svec<bool, N> getBoolVector() const {
        return read<svec<bool, N>>();
    }
    template <std::size_t N>
    svec<vec2, N> getVec2Vector() const {
        return read<svec<vec2, N>>();
    }
    template <std::size_t N>
    svec<vec3, N> getVec3Vector() const {
        return read<svec<vec3, N>>();
    }
    template <std::size_t N>
    svec<mat4, N> getMat4Vector() const {
        return read<svec<mat4, N>>();
    }

    template <std::size_t N>
    std::array<int, N> getIntArray() const {
        return read<std::array<int, N>>();
    }
    template <std::size_t N>
    std::array<unsigned int, N> getUIntArray() const {
        return read<std::array<unsigned int, N>>();
    }
    template <std::size_t N>
    std::array<bool, N> getBoolArray() const {
        return read<std::array<bool, N>>();
    }
    template <std::size_t N>
    std::array<vec2, N> getVec2Array() const {
        return read<std::array<vec2, N>>();
    }
    template <std::size_t N>
    std::array<vec3, N> getVec3Array() const {
        return read<std::array<vec3, N>>();
    }

    template <std::size_t N>
    static_vector<float, N> getFloatVectorFixed() const {
        return read<static_vector<float, N>>();
    }
    template <std::size_t N>
    static_vector<int, N> getIntVectorFixed() const {
        return read<static_vector<int, N>>();
    }
    template <std::size_t N>
    static_vector<bool, N> getBoolVectorFixed() const {
        return read<static_vector<bool, N>>();
    }
    template <std::size_t N>
    static_vector<vec3, N> getVec3VectorFixed() const {
        return read<static_vector<vec3, N>>();
    }

    std::vector<float> getFloatList() const { return read<std::vector<float>>(); }
    std::vector<int> getIntList() const { return read<std::vector<int>>(); }
    std::vector<bool> getBoolList() const { return read<std::vector<bool>>(); }
    std::vector<vec3> getVec3List() const { return read<std::vector<vec3>>(); }
    std::vector<mat4> getMat4List() const { return read<std::vector<mat4>>(); }

    std::map<unsigned int, float> getFloatMap() const { return read<std::map<unsigned int, float>>(); }
    std::map<unsigned int, vec3> getVec3Map() const { return read<std::map<unsigned int, vec3>>(); }

    /// Throws std::runtime_error on a port of another number of entries, or of more.
    void requireSize(std::size_t size) const;
    void requireAtMost(std::size_t size) const;

private:
    std::vector<Element> elements_;
};

template <class T>
T OneEntry<T>::read(const Port& port) {
    return ValueType<T>::read(port.castSingle());
}

template <class List, class Item>
List EntryList<List, Item>::read(const Port& port) {
    List list;
    list.reserve(port.elements().size());
    for (const Element& element : port.elements()) {
        list.push_back(ValueType<Item>::read(element));
    }
    return list;
}

template <class T, std::size_t N>
std::array<T, N> PortType<std::array<T, N>>::read(const Port& port) {
    port.requireSize(N);
    std::array<T, N> array;
    for (std::size_t i = 0; i < N; ++i) {
        array[i] = ValueType<T>::read(port.elements()[i]);
    }
    return array;
}

template <class T, std::size_t N>
static_vector<T, N> PortType<static_vector<T, N>>::read(const Port& port) {
    port.requireAtMost(N);
    return EntryList<static_vector<T, N>, T>::read(port);
}

template <class Key, class Item>
std::map<Key, Item> EntryMap<Key, Item>::read(const Port& port) {
    std::map<Key, Item> map;
    for (const Element& element : port.elements()) {
        if constexpr (std::is_same_v<Key, unsigned int>) {
            map[element.index(0)] = ValueType<Item>::read(element);
        } else {
            map[element.indexPair()] = ValueType<Item>::read(element);
        }
    }
    return map;
}

/// Adds an element to the port of an attribute number; the list grows to hold it. A number beyond 65,535, which no
/// method reads, is passed over.
void addTo(std::vector<Port>& ports, unsigned int index, Element&& element);

/// A record's inputs by attribute number.
class Arguments {
public:
    void add(unsigned int index, Element&& element);
    /// The port of an attribute number, an empty one beyond the end.
    const Port& get(unsigned int index) const;
    const std::vector<Port>& ports() const { return ports_; }

private:
    std::vector<Port> ports_;
};

} // namespace zent
