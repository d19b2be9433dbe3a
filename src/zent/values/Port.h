#pragma once

#include "zent/expression/Value.h"
#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"
#include "zent/math/types.h"

#include <maya/MDagPath.h>
#include <maya/MPlug.h>
#include <nlohmann/json.hpp>

#include <array>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace zent {

using json = nlohmann::json;
class ResourceStorage;

/// Where a value stands in its record, for the texts of errors.
struct Place {
    const char* list = nullptr; ///< "results" or "arguments", null for a value that stands in no record
    unsigned int attribute = 0;
};

/// One input value of a record: a literal, the name of a plug, or a reference into the resource file. Each getter
/// decides which one it holds, so that a reader never has to.
///
/// A string is a plug name and is resolved in the scene at each read; a number, a boolean or an array is a literal; an
/// object with "id" is a block of the resource file. Getters throw std::runtime_error or the JSON library's exceptions.
class Element {
public:
    explicit Element(json&& value, std::vector<unsigned int> indices = {}, Place place = {});

    float getFloat() const;
    int getInt() const;
    bool getBool() const;
    /// The string itself; "not a string" for any other value.
    const std::string& getString() const;
    vec2 getVec2() const;
    vec3 getVec3() const;
    vec4 getVec4() const;
    mat4 getMat4() const;

    /// The path to the DAG node that feeds the named plug.
    MDagPath getDagPath() const;
    /// The named plug, or its source where its own data is null.
    MPlug getMayaShape() const;

    /// A copy of a stored record. T is Mesh, Curve, Surface or Lattice (a plug or a block), or one of the types that
    /// only a block can hold: WeightMap, DeltaList, std::vector<unsigned int>, std::vector<unsigned char>,
    /// std::vector<Value>, SkinWeights, WireBindings.
    template <class T>
    T get() const;

    /// The entry's logical indices of a multi plug, empty if it gave none.
    const std::vector<unsigned int>& indices() const { return indices_; }
    /// Index `position` of the entry; an error that names what is missing if it gave fewer.
    unsigned int index(std::size_t position) const;
    /// The first two logical indices, the key of an in-between item or of a pose's element.
    std::pair<unsigned int, unsigned int> indexPair() const { return {index(0), index(1)}; }

    Place place() const { return place_; }

    /// The one storage of resource blocks: made at first need, never freed.
    static ResourceStorage* pResource;
    static ResourceStorage& storage();

private:
    template <class T>
    T fromResource() const;

    json value_;
    std::vector<unsigned int> indices_;
    Place place_;
};

/// The entries of one attribute number, in manifest order.
class Port {
public:
    void add(Element&& element) { elements_.push_back(std::move(element)); }
    const std::vector<Element>& elements() const { return elements_; }

    /// The one element of a port that has exactly one; "not single" otherwise.
    const Element& castSingle() const;

    template <std::size_t N>
    svec<float, N> getFloatVector() const {
        return collect<svec<float, N>>(&Element::getFloat);
    }
    template <std::size_t N>
    svec<int, N> getIntVector() const {
        return collect<svec<int, N>>(&Element::getInt);
    }
    template <std::size_t N>
    svec<unsigned int, N> getUIntVector() const {
        return collect<svec<unsigned int, N>>(&Element::getInt);
    }
    template <std::size_t N>
    svec<bool, N> getBoolVector() const {
        return collect<svec<bool, N>>(&Element::getBool);
    }
    template <std::size_t N>
    svec<vec2, N> getVec2Vector() const {
        return collect<svec<vec2, N>>(&Element::getVec2);
    }
    template <std::size_t N>
    svec<vec3, N> getVec3Vector() const {
        return collect<svec<vec3, N>>(&Element::getVec3);
    }
    template <std::size_t N>
    svec<mat4, N> getMat4Vector() const {
        return collect<svec<mat4, N>>(&Element::getMat4);
    }

    template <std::size_t N>
    std::array<int, N> getIntArray() const {
        return collectArray<int, N>(&Element::getInt);
    }
    template <std::size_t N>
    std::array<unsigned int, N> getUIntArray() const {
        return collectArray<unsigned int, N>(&Element::getInt);
    }
    template <std::size_t N>
    std::array<bool, N> getBoolArray() const {
        return collectArray<bool, N>(&Element::getBool);
    }
    template <std::size_t N>
    std::array<vec2, N> getVec2Array() const {
        return collectArray<vec2, N>(&Element::getVec2);
    }
    template <std::size_t N>
    std::array<vec3, N> getVec3Array() const {
        return collectArray<vec3, N>(&Element::getVec3);
    }

    template <std::size_t N>
    static_vector<float, N> getFloatVectorFixed() const {
        return collectFixed<float, N>(&Element::getFloat);
    }
    template <std::size_t N>
    static_vector<int, N> getIntVectorFixed() const {
        return collectFixed<int, N>(&Element::getInt);
    }
    template <std::size_t N>
    static_vector<bool, N> getBoolVectorFixed() const {
        return collectFixed<bool, N>(&Element::getBool);
    }
    template <std::size_t N>
    static_vector<vec3, N> getVec3VectorFixed() const {
        return collectFixed<vec3, N>(&Element::getVec3);
    }

    std::vector<float> getFloatList() const { return collect<std::vector<float>>(&Element::getFloat); }
    std::vector<int> getIntList() const { return collect<std::vector<int>>(&Element::getInt); }
    std::vector<bool> getBoolList() const { return collect<std::vector<bool>>(&Element::getBool); }
    std::vector<vec3> getVec3List() const { return collect<std::vector<vec3>>(&Element::getVec3); }
    std::vector<mat4> getMat4List() const { return collect<std::vector<mat4>>(&Element::getMat4); }

    /// By each element's first logical index; a later element with the same key overwrites the earlier one.
    std::map<unsigned int, float> getFloatMap() const { return collectMap<float>(&Element::getFloat); }
    std::map<unsigned int, vec3> getVec3Map() const { return collectMap<vec3>(&Element::getVec3); }

private:
    template <class List, class T>
    List collect(T (Element::*getter)() const) const {
        List list;
        list.reserve(elements_.size());
        for (const Element& element : elements_) {
            list.push_back(static_cast<typename List::value_type>((element.*getter)()));
        }
        return list;
    }

    template <class Item, std::size_t N, class T>
    std::array<Item, N> collectArray(T (Element::*getter)() const) const {
        requireSize(N);
        std::array<Item, N> array;
        for (std::size_t i = 0; i < N; ++i) {
            array[i] = static_cast<Item>((elements_[i].*getter)());
        }
        return array;
    }

    template <class Item, std::size_t N, class T>
    static_vector<Item, N> collectFixed(T (Element::*getter)() const) const {
        requireAtMost(N);
        static_vector<Item, N> list;
        for (const Element& element : elements_) {
            list.push_back((element.*getter)());
        }
        return list;
    }

    template <class T>
    std::map<unsigned int, T> collectMap(T (Element::*getter)() const) const {
        std::map<unsigned int, T> map;
        for (const Element& element : elements_) {
            map[element.index(0)] = (element.*getter)();
        }
        return map;
    }

    void requireSize(std::size_t size) const;
    void requireAtMost(std::size_t size) const;

    std::vector<Element> elements_;
};

/// The port of an attribute number; the list grows to hold it. Throws std::runtime_error on a number that could only
/// ask for absurd memory.
Port& portAt(std::vector<Port>& ports, unsigned int index);

/// A record's inputs by attribute number.
class Arguments {
public:
    void add(unsigned int index, Element&& element);
    /// The port of an attribute number, an empty one beyond the end.
    const Port& get(unsigned int index) const;

private:
    std::vector<Port> ports_;
};

} // namespace zent
